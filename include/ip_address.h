// An IP address of either family, as a value.
#pragma once

#include <cstddef>

#include "address_family.h"

// All zero bytes mean that the address is unset, whatever its family.
struct IpAddress {
    AddressFamily family;
    unsigned char bytes[16]; // network byte order; an IPv4 address is in the first 4, and the others are zero
};

// How many bytes an address of the family has.
constexpr std::size_t address_size(AddressFamily family)
{
    return family == AddressFamily::IPV4 ? 4 : 16;
}

constexpr bool is_unset(const IpAddress& address)
{
    unsigned any = 0;
    for (const unsigned char byte : address.bytes)
        any |= byte;
    return any == 0;
}

// 10.0.0.0/8, 172.16.0.0/12 and 192.168.0.0/16 (RFC 1918).
constexpr bool is_private_ipv4(const IpAddress& address)
{
    const unsigned char(&b)[16] = address.bytes;
    return address.family == AddressFamily::IPV4 &&
           (b[0] == 10 || (b[0] == 172 && (b[1] & 0xF0) == 16) || (b[0] == 192 && b[1] == 168));
}
