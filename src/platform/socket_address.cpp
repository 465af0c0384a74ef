#include "platform/socket_address.h"

#include <cstring>

#include "platform/address_text.h"

SocketAddress make_socket_address(AddressFamily family, const char* text, std::uint16_t port)
{
    SocketAddress address;
    std::memset(&address, 0, sizeof address);
    if (family == AddressFamily::IPV4) {
        address.ipv4.sin_family = AF_INET;
        address.ipv4.sin_port = htons(port);
        convert_address(family, text, &address.ipv4.sin_addr);
        address.length = sizeof address.ipv4;
    } else {
        address.ipv6.sin6_family = AF_INET6;
        address.ipv6.sin6_port = htons(port);
        convert_address(family, text, &address.ipv6.sin6_addr);
        address.length = sizeof address.ipv6;
    }
    return address;
}
