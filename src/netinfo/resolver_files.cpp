#include "netinfo/resolver_files.h"

#include <strings.h>

#include <cstring>

#include "platform/address_text.h"

namespace
{

constexpr char KEYWORD[] = "nameserver ";
constexpr std::size_t KEYWORD_LENGTH = sizeof KEYWORD - 1;

constexpr std::size_t IPV4_LINE_SIZE = 256;
constexpr std::size_t IPV6_LINE_SIZE = 512;
constexpr std::size_t IPV4_TEXT_END = 50;    // counted from the start of the line
constexpr std::size_t IPV6_TEXT_LENGTH = 50; // counted from behind the keyword

// An address text with a dot takes its slot, whether or not it converts.
bool take_ipv4_server(const char* rest, in_addr& server)
{
    char text[IPV4_TEXT_END - KEYWORD_LENGTH + 1];
    copy_leading(rest, IPV4_TEXT_CHARACTERS, text);
    if (std::strchr(text, '.') == nullptr || std::strcmp(text, "127.0.0.1") == 0)
        return false;
    convert_address(AddressFamily::IPV4, text, &server);
    return true;
}

bool take_ipv6_server(const char* rest, in6_addr& server)
{
    // A dot anywhere in what is looked at marks an IPv4 server, or an IPv6 address with an IPv4 tail.
    if (std::memchr(rest, '.', strnlen(rest, IPV6_TEXT_LENGTH)) != nullptr)
        return false;
    char text[IPV6_TEXT_LENGTH + 1];
    copy_leading(rest, IPV6_TEXT_CHARACTERS, text);
    return std::strcmp(text, "::1") != 0 && convert_address(AddressFamily::IPV6, text, &server);
}

} // namespace

int take_resolver_line(AddressFamily family, const char* line, void* servers, int count)
{
    if (count >= static_cast<int>(MAX_NAME_SERVERS) || strncasecmp(line, KEYWORD, KEYWORD_LENGTH) != 0)
        return count;
    const char* rest = line + KEYWORD_LENGTH;
    const bool taken = family == AddressFamily::IPV4 ? take_ipv4_server(rest, static_cast<in_addr*>(servers)[count])
                                                     : take_ipv6_server(rest, static_cast<in6_addr*>(servers)[count]);
    return taken ? count + 1 : count;
}

int take_resolver_text(AddressFamily family, TextReader& reader, void* servers, int count)
{
    char line[IPV6_LINE_SIZE];
    const std::size_t line_size = family == AddressFamily::IPV4 ? IPV4_LINE_SIZE : IPV6_LINE_SIZE;
    while (read_piece(reader, line, line_size))
        count = take_resolver_line(family, line, servers, count);
    return count;
}

int read_nameservers(AddressFamily family, void* servers)
{
    std::memset(servers, 0, MAX_NAME_SERVERS * address_size(family));
    int count = 0;
    for (const char* path : RESOLVER_FILES) {
        TextReader reader;
        if (!open_text_file(path, reader))
            continue;
        count = take_resolver_text(family, reader, servers, count);
        close_text_file(reader);
    }
    return count;
}
