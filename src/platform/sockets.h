// What the socket calls need: an address in their form, and the wait for a socket.
#pragma once

#include <netinet/in.h>
#include <sys/socket.h>

#include <cstdint>

#include "ip_address.h"

struct SocketAddress {
    union {
        sockaddr generic;
        sockaddr_in ipv4;
        sockaddr_in6 ipv6;
    };
    socklen_t length; // 16 bytes for IPv4, 28 for IPv6
};

// The port is in host byte order. Flow information and scope are 0.
SocketAddress make_socket_address(const IpAddress& address, std::uint16_t port);

// Sleeps until the socket is readable (POLLIN) or writable (POLLOUT), or has failed. Returns false if the time in
// milliseconds passed first or waiting was impossible.
bool wait_for_socket(int descriptor, short event, int milliseconds);
