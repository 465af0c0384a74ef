#include "probe/ipv4_address_class.h"

#include <arpa/inet.h>

#include <cstdint>

Ipv4AddressClass classify_ipv4_address(const char* text)
{
    const in_addr_t address = inet_addr(text);
    if (address == 0 || address == INADDR_NONE)
        return ADDR_INVALID;
    const std::uint32_t host_order = ntohl(address);
    if (host_order >> 16 == (192U << 8 | 168U))
        return ADDR_PRIVATE_192;
    if (host_order >> 20 == (172U << 4 | 1U))
        return ADDR_PRIVATE_172;
    if (host_order >> 24 == 10)
        return ADDR_PRIVATE_10;
    return ADDR_OTHER;
}
