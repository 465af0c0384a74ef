// What the operating system knows about the examined interface; all bytes zero means unset.
#pragma once

#include <netinet/in.h>

#include <cstddef>
#include <cstdint>

#include "address_family.h"

inline constexpr std::size_t MAX_NAME_SERVERS = 8;

// Addresses are raw bytes in network byte order.
struct NetConfig {
    in_addr ipv4_addr;
    in_addr ipv4_mask;
    in_addr ipv4_gateway;
    in_addr ipv4_dns[MAX_NAME_SERVERS];
    in6_addr ipv6_addr; // global scope
    std::uint16_t ipv6_prefix_len;
    in6_addr ipv6_gateway;
    in6_addr ipv6_dns[MAX_NAME_SERVERS];
    unsigned char hw_addr[6];
};

// Room for the name servers of either family.
union NameServerSlots {
    in_addr ipv4[MAX_NAME_SERVERS];
    in6_addr ipv6[MAX_NAME_SERVERS];
};

inline const void* interface_address(AddressFamily family, const NetConfig& config)
{
    return family == AddressFamily::IPV4 ? static_cast<const void*>(&config.ipv4_addr) : &config.ipv6_addr;
}

inline void* gateway(AddressFamily family, NetConfig& config)
{
    return family == AddressFamily::IPV4 ? static_cast<void*>(&config.ipv4_gateway) : &config.ipv6_gateway;
}

// The family's MAX_NAME_SERVERS slots.
inline void* dns_servers(AddressFamily family, NetConfig& config)
{
    return family == AddressFamily::IPV4 ? static_cast<void*>(config.ipv4_dns) : config.ipv6_dns;
}
