#include "netinfo/default_routes.h"

#include <cctype>
#include <cstring>

#include "netinfo/hex.h"

namespace
{

constexpr char IPV4_TABLE[] = "/proc/net/route";
constexpr char IPV6_TABLE[] = "/proc/net/ipv6_route";
// A line of the IPv4 table is padded to 127 characters and arrives as three pieces; the first holds all that is needed.
// A line of the IPv6 table with a device name of up to 8 characters fills one piece; a longer name is cut.
constexpr std::size_t IPV4_PIECE_SIZE = 56;
constexpr std::size_t IPV6_PIECE_SIZE = 150;

constexpr std::size_t DEVICE_NAME_SIZE = 16;
constexpr std::uint32_t UP_AND_GATEWAY = 0x3; // RTF_UP | RTF_GATEWAY, and no other flag

// Reads a word of at most 15 characters, leaving `text` behind it; an empty one at the end of the text.
void take_device_name(const char*& text, char (&name)[DEVICE_NAME_SIZE])
{
    text = skip_white_space(text);
    std::size_t length = 0;
    while (length < sizeof name - 1 && *text != '\0' && !std::isspace(static_cast<unsigned char>(*text)))
        name[length++] = *text++;
    name[length] = '\0';
}

RouteMatch match_ipv4_piece(const char* piece, const char* name, in_addr& gateway)
{
    char device[DEVICE_NAME_SIZE];
    std::uint32_t destination;
    std::uint32_t next_hop;
    std::uint32_t flags;
    take_device_name(piece, device);
    if (!take_hex(piece, 8, destination) || !take_hex(piece, 8, next_hop) || !take_hex(piece, 8, flags))
        return RouteMatch::NONE;
    if (flags != UP_AND_GATEWAY || std::strstr(device, name) == nullptr)
        return RouteMatch::NONE;
    gateway.s_addr = next_hop;
    return RouteMatch::GATEWAY;
}

// Reads 16 groups of two digits. Returns how many could be read.
int take_ipv6_bytes(const char*& text, unsigned char (&bytes)[16])
{
    for (int i = 0; i < 16; ++i) {
        std::uint32_t value;
        if (!take_hex(text, 2, value))
            return i;
        bytes[i] = static_cast<unsigned char>(value);
    }
    return 16;
}

RouteMatch match_ipv6_piece(const char* piece, const char* name, in6_addr& gateway)
{
    piece = skip_white_space(piece);
    if (*piece == '\0')
        return RouteMatch::NONE;
    unsigned char destination[16];
    const int groups = take_ipv6_bytes(piece, destination);
    if (groups == 0)
        return RouteMatch::END_OF_TABLE;

    unsigned char source[16];
    unsigned char next_hop[16];
    std::uint32_t unused; // prefix lengths, metric, reference count, use
    std::uint32_t flags;
    if (groups < 16 || !take_hex(piece, 2, unused) || take_ipv6_bytes(piece, source) < 16 ||
        !take_hex(piece, 2, unused) || take_ipv6_bytes(piece, next_hop) < 16 || !take_hex(piece, 8, unused) ||
        !take_hex(piece, 8, unused) || !take_hex(piece, 8, unused) || !take_hex(piece, 8, flags))
        return RouteMatch::NONE;
    char device[DEVICE_NAME_SIZE];
    take_device_name(piece, device);
    if (flags != UP_AND_GATEWAY || std::strstr(device, name) == nullptr)
        return RouteMatch::NONE;
    std::memcpy(&gateway, next_hop, sizeof gateway);
    return RouteMatch::GATEWAY;
}

} // namespace

RouteMatch match_route_piece(AddressFamily family, const char* piece, const char* name, void* gateway)
{
    return family == AddressFamily::IPV4 ? match_ipv4_piece(piece, name, *static_cast<in_addr*>(gateway))
                                         : match_ipv6_piece(piece, name, *static_cast<in6_addr*>(gateway));
}

int find_gateway(AddressFamily family, TextReader& reader, const char* name, void* gateway)
{
    char piece[IPV6_PIECE_SIZE];
    const std::size_t piece_size = family == AddressFamily::IPV4 ? IPV4_PIECE_SIZE : IPV6_PIECE_SIZE;
    RouteMatch match = RouteMatch::NONE;
    while (match == RouteMatch::NONE && read_piece(reader, piece, piece_size))
        match = match_route_piece(family, piece, name, gateway);
    return match == RouteMatch::GATEWAY ? 0 : 1;
}

int read_gateway(AddressFamily family, const char* name, char* text, void* gateway)
{
    std::memset(gateway, 0, address_size(family));
    int result = 1;
    TextReader reader;
    if (open_text_file(family == AddressFamily::IPV4 ? IPV4_TABLE : IPV6_TABLE, reader)) {
        result = find_gateway(family, reader, name, gateway);
        close_text_file(reader);
    }
    inet_ntop(socket_family(family), gateway, text, family == AddressFamily::IPV4 ? INET_ADDRSTRLEN : INET6_ADDRSTRLEN);
    return result;
}
