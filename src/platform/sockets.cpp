#include "platform/sockets.h"

#include <endian.h>
#include <poll.h>

#include <cstring>

SocketAddress make_socket_address(const IpAddress& address, std::uint16_t port)
{
    SocketAddress made;
    std::memset(&made, 0, sizeof made);
    if (address.family == AddressFamily::IPV4) {
        made.ipv4.sin_family = AF_INET;
        made.ipv4.sin_port = htobe16(port);
        std::memcpy(&made.ipv4.sin_addr, address.bytes, sizeof made.ipv4.sin_addr);
        made.length = sizeof made.ipv4;
    } else {
        made.ipv6.sin6_family = AF_INET6;
        made.ipv6.sin6_port = htobe16(port);
        std::memcpy(&made.ipv6.sin6_addr, address.bytes, sizeof made.ipv6.sin6_addr);
        made.length = sizeof made.ipv6;
    }
    return made;
}

bool wait_for_socket(int descriptor, short event, int milliseconds)
{
    // Not select: a careless parent may leave so many descriptors open that the socket is beyond select's sets.
    pollfd entry = {descriptor, event, 0};
    return poll(&entry, 1, milliseconds) > 0;
}
