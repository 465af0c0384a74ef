// The two address families.
#pragma once

#include <sys/socket.h>

enum class AddressFamily { IPV4 = 0, IPV6 = 1 };

// In the order in which everything is checked.
inline constexpr AddressFamily ADDRESS_FAMILIES[] = {AddressFamily::IPV4, AddressFamily::IPV6};

constexpr int socket_family(AddressFamily family)
{
    return family == AddressFamily::IPV4 ? AF_INET : AF_INET6;
}
