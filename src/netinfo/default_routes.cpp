#include "netinfo/default_routes.h"

#include <cstring>

#include "netinfo/hex.h"
#include "platform/text_field.h"

namespace
{

constexpr char IPV4_TABLE[] = "/proc/net/route";
constexpr char IPV6_TABLE[] = "/proc/net/ipv6_route";
// A line of the IPv4 table is padded to 127 characters and arrives as three pieces; the first has all that is needed.
// A line of the IPv6 table with a device name of up to 8 characters fills one piece; a longer device name is cut.
constexpr std::size_t IPV4_PIECE_SIZE = 56;
constexpr std::size_t IPV6_PIECE_SIZE = 150;

constexpr std::size_t DEVICE_NAME_SIZE = 16;
constexpr std::uint32_t UP_AND_GATEWAY = 0x3; // RTF_UP | RTF_GATEWAY, and no other flag

enum class RouteMatch { NONE, GATEWAY, END_OF_TABLE };

bool is_gateway_route(std::uint32_t flags, const char* device, const InterfaceName& interface_name)
{
    return flags == UP_AND_GATEWAY && std::strstr(device, interface_name.text) != nullptr;
}

// Reads a word of at most 15 characters and leaves `text` after it. The word is empty at the end of the text.
void take_device_name(const char*& text, char (&name)[DEVICE_NAME_SIZE])
{
    text = skip_white_space(text);
    copy_text(text, std::strcspn(text, WHITE_SPACE), name);
    text += std::strlen(name);
}

RouteMatch match_ipv4_piece(const char* piece, const InterfaceName& interface_name, IpAddress& gateway)
{
    char device[DEVICE_NAME_SIZE];
    std::uint32_t destination;
    std::uint32_t next_hop;
    std::uint32_t flags;
    take_device_name(piece, device);
    if (!take_hex(piece, 8, destination) || !take_hex(piece, 8, next_hop) || !take_hex(piece, 4, flags) ||
        !is_gateway_route(flags, device, interface_name))
        return RouteMatch::NONE;
    // The kernel prints the address as a host-order number; stored as one, its bytes are in network order.
    gateway = {AddressFamily::IPV4, {}};
    std::memcpy(gateway.bytes, &next_hop, sizeof next_hop);
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

RouteMatch match_ipv6_piece(const char* piece, const InterfaceName& interface_name, IpAddress& gateway)
{
    piece = skip_white_space(piece);
    if (*piece == '\0')
        return RouteMatch::NONE;
    unsigned char destination[16];
    const int groups = take_ipv6_bytes(piece, destination);
    if (groups == 0)
        return RouteMatch::END_OF_TABLE;

    unsigned char source[16];
    IpAddress next_hop = {AddressFamily::IPV6, {}};
    std::uint32_t unused; // prefix lengths, metric, reference count, use
    std::uint32_t flags;
    if (groups < 16 || !take_hex(piece, 2, unused) || take_ipv6_bytes(piece, source) < 16 ||
        !take_hex(piece, 2, unused) || take_ipv6_bytes(piece, next_hop.bytes) < 16 || !take_hex(piece, 8, unused) ||
        !take_hex(piece, 8, unused) || !take_hex(piece, 8, unused) || !take_hex(piece, 8, flags))
        return RouteMatch::NONE;
    char device[DEVICE_NAME_SIZE];
    take_device_name(piece, device);
    if (!is_gateway_route(flags, device, interface_name))
        return RouteMatch::NONE;
    gateway = next_hop;
    return RouteMatch::GATEWAY;
}

} // namespace

bool find_gateway(AddressFamily family, TextReader& table, const InterfaceName& interface_name, IpAddress& gateway)
{
    char piece[IPV6_PIECE_SIZE];
    const bool is_ipv4 = family == AddressFamily::IPV4;
    const std::size_t piece_size = is_ipv4 ? IPV4_PIECE_SIZE : IPV6_PIECE_SIZE;
    RouteMatch match = RouteMatch::NONE;
    while (match == RouteMatch::NONE && read_piece(table, piece, piece_size)) {
        match = is_ipv4 ? match_ipv4_piece(piece, interface_name, gateway)
                        : match_ipv6_piece(piece, interface_name, gateway);
    }
    return match == RouteMatch::GATEWAY;
}

int read_gateway(AddressFamily family, const InterfaceName& interface_name, IpAddress& gateway)
{
    gateway = {family, {}};
    TextReader table;
    if (!open_kernel_file(family == AddressFamily::IPV4 ? IPV4_TABLE : IPV6_TABLE, table))
        return 1;
    const bool found = find_gateway(family, table, interface_name, gateway);
    close_text_file(table);
    return found ? 0 : 1;
}
