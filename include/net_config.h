// What the operating system knows about the examined interface.
#pragma once

#include <cstddef>
#include <cstdint>

#include "ip_address.h"

inline constexpr std::size_t MAX_NAME_SERVERS = 8;

// Filled from slot 0 on; unused slots are unset.
using NameServerSlots = IpAddress[MAX_NAME_SERVERS];

// All bytes zero mean that nothing is known. No verdict depends on ipv4_mask, ipv6_prefix_len and hw_addr.
struct NetConfig {
    IpAddress ipv4_addr;
    IpAddress ipv4_mask;
    IpAddress ipv4_gateway;
    NameServerSlots ipv4_dns;
    IpAddress ipv6_addr; // global scope
    std::uint16_t ipv6_prefix_len;
    IpAddress ipv6_gateway;
    NameServerSlots ipv6_dns;
    unsigned char hw_addr[6];
};

inline const IpAddress& interface_address(AddressFamily family, const NetConfig& config)
{
    return family == AddressFamily::IPV4 ? config.ipv4_addr : config.ipv6_addr;
}

inline IpAddress& gateway(AddressFamily family, NetConfig& config)
{
    if (family == AddressFamily::IPV4)
        return config.ipv4_gateway;
    return config.ipv6_gateway;
}

inline NameServerSlots& name_server_slots(AddressFamily family, NetConfig& config)
{
    if (family == AddressFamily::IPV4)
        return config.ipv4_dns;
    return config.ipv6_dns;
}
