#include "socket_address.h"

#include <arpa/inet.h>

#include <cstring>

SocketAddress make_socket_address(AddressFamily family, const char* text, std::uint16_t port)
{
    SocketAddress address;
    std::memset(&address, 0, sizeof address);
    // Some C libraries write part of the target when they fail.
    AnyAddress converted;
    if (inet_pton(socket_family(family), text, &converted) != 1)
        std::memset(&converted, 0, sizeof converted);
    if (family == AddressFamily::IPV4) {
        address.ipv4.sin_family = AF_INET;
        address.ipv4.sin_port = htons(port);
        address.ipv4.sin_addr = converted.ipv4;
        address.length = sizeof address.ipv4;
    } else {
        address.ipv6.sin6_family = AF_INET6;
        address.ipv6.sin6_port = htons(port);
        address.ipv6.sin6_addr = converted.ipv6;
        address.length = sizeof address.ipv6;
    }
    return address;
}
