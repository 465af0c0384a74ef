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

// What kind of network an IPv4 address belongs to.
enum Ipv4AddressClass : int {
    ADDR_INVALID = 0,     // 0.0.0.0, 255.255.255.255 or an IPv6 address
    ADDR_PRIVATE_10 = 1,  // 10.0.0.0/8 (RFC 1918, as the next two)
    ADDR_PRIVATE_172 = 2, // 172.16.0.0/12
    ADDR_PRIVATE_192 = 3, // 192.168.0.0/16
    ADDR_OTHER = 4,
};

constexpr Ipv4AddressClass classify_ipv4_address(const IpAddress& address)
{
    const unsigned char(&b)[16] = address.bytes;
    const bool all_ones = (b[0] & b[1] & b[2] & b[3]) == 0xFF;
    if (address.family != AddressFamily::IPV4 || is_unset(address) || all_ones)
        return ADDR_INVALID;
    if (b[0] == 192 && b[1] == 168)
        return ADDR_PRIVATE_192;
    if (b[0] == 172 && (b[1] & 0xF0) == 16)
        return ADDR_PRIVATE_172;
    return b[0] == 10 ? ADDR_PRIVATE_10 : ADDR_OTHER;
}
