// An address of either family as the socket calls take it.
#pragma once

#include <netinet/in.h>
#include <sys/socket.h>

#include <cstdint>

#include "address_family.h"

struct SocketAddress {
    union {
        sockaddr generic;
        sockaddr_in ipv4;
        sockaddr_in6 ipv6;
    };
    socklen_t length; // 16 or 28 bytes by family
};

// The address that `text` spells and a port in host byte order; flow information and scope are 0, and so is the address
// when the text spells none.
SocketAddress make_socket_address(AddressFamily family, const char* text, std::uint16_t port);
