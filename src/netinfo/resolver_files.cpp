#include "netinfo/resolver_files.h"

#include <strings.h>

#include <cstring>

#include "platform/address_text.h"
#include "platform/text_field.h"

namespace
{

// Both files are read, in this order, into one list.
constexpr char RESOLVER_FILES[][22] = {"/tmp/resolv.conf.auto", "/etc/resolv.conf"};

constexpr char KEYWORD[] = "nameserver ";
constexpr std::size_t KEYWORD_LENGTH = sizeof KEYWORD - 1;

constexpr std::size_t IPV4_LINE_SIZE = 256;
constexpr std::size_t IPV6_LINE_SIZE = 512;
constexpr std::size_t IPV4_TEXT_END = 50;    // counted from the start of the line
constexpr std::size_t IPV6_TEXT_LENGTH = 50; // counted from the end of the keyword

// An address text with a dot takes its slot, whether or not it converts.
bool take_ipv4_server(const char* rest, IpAddress& server)
{
    char text[IPV4_TEXT_END - KEYWORD_LENGTH + 1];
    copy_leading(rest, IPV4_TEXT_CHARACTERS, text);
    if (std::strchr(text, '.') == nullptr || std::strcmp(text, "127.0.0.1") == 0)
        return false;
    convert_address(AddressFamily::IPV4, text, server);
    return true;
}

bool take_ipv6_server(const char* rest, IpAddress& server)
{
    // A dot marks an IPv4 server, or an IPv6 address with an IPv4 tail.
    const std::size_t dot = std::strcspn(rest, ".");
    if (dot < IPV6_TEXT_LENGTH && rest[dot] == '.')
        return false;
    char text[IPV6_TEXT_LENGTH + 1];
    copy_leading(rest, IPV6_TEXT_CHARACTERS, text);
    return std::strcmp(text, "::1") != 0 && convert_address(AddressFamily::IPV6, text, server);
}

bool take_server(AddressFamily family, const char* line, IpAddress& server)
{
    if (strncasecmp(line, KEYWORD, KEYWORD_LENGTH) != 0)
        return false;
    const char* rest = line + KEYWORD_LENGTH;
    return family == AddressFamily::IPV4 ? take_ipv4_server(rest, server) : take_ipv6_server(rest, server);
}

} // namespace

int take_resolver_text(AddressFamily family, TextReader& reader, NameServerSlots& servers, int count)
{
    char line[IPV6_LINE_SIZE];
    const std::size_t line_size = family == AddressFamily::IPV4 ? IPV4_LINE_SIZE : IPV6_LINE_SIZE;
    while (read_piece(reader, line, line_size)) {
        if (count < static_cast<int>(MAX_NAME_SERVERS) && take_server(family, line, servers[count]))
            ++count;
    }
    return count;
}

int read_nameservers(AddressFamily family, NameServerSlots& servers)
{
    for (IpAddress& server : servers)
        server = {family, {}};
    int count = 0;
    for (const char(&path)[22] : RESOLVER_FILES) {
        TextReader reader;
        if (!open_regular_file(path, reader))
            continue;
        count = take_resolver_text(family, reader, servers, count);
        close_text_file(reader);
    }
    return count;
}
