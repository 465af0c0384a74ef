// The two address families, and the sizes that follow from them.
#pragma once

#include <netinet/in.h>
#include <sys/socket.h>

#include <cstddef>

enum class AddressFamily { IPV4 = 0, IPV6 = 1 };

// In the order in which everything is checked.
inline constexpr AddressFamily ADDRESS_FAMILIES[] = {AddressFamily::IPV4, AddressFamily::IPV6};

constexpr int socket_family(AddressFamily family)
{
    return family == AddressFamily::IPV4 ? AF_INET : AF_INET6;
}

// Size in bytes of an address in network byte order.
constexpr std::size_t address_size(AddressFamily family)
{
    return family == AddressFamily::IPV4 ? sizeof(in_addr) : sizeof(in6_addr);
}

// Room for an address of either family.
union AnyAddress {
    in_addr ipv4;
    in6_addr ipv6;
};

// True when all bytes of the address are zero, that is when it would be written "0.0.0.0" or "::".
inline bool is_unset(AddressFamily family, const void* address)
{
    const auto* bytes = static_cast<const unsigned char*>(address);
    unsigned char any = 0;
    for (std::size_t i = 0; i < address_size(family); ++i)
        any = static_cast<unsigned char>(any | bytes[i]);
    return any == 0;
}
