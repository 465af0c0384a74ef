#include "dns/source_interface.h"

#include <arpa/inet.h>
#include <net/if.h>

#include <cstring>

namespace
{

constexpr int MAX_CANDIDATES = 10;

// The entry's IPv6 address, or null when its interface is down or its address of another family.
const in6_addr* ipv6_address_in_use(const ifaddrs& entry)
{
    if ((entry.ifa_flags & IFF_UP) == 0 || entry.ifa_addr == nullptr || entry.ifa_addr->sa_family != AF_INET6)
        return nullptr;
    const void* address = entry.ifa_addr;
    return &static_cast<const sockaddr_in6*>(address)->sin6_addr;
}

bool is_candidate(const ifaddrs& entry)
{
    const in6_addr* address = ipv6_address_in_use(entry);
    return address != nullptr && !IN6_IS_ADDR_LINKLOCAL(address) && !IN6_IS_ADDR_SITELOCAL(address) &&
           !IN6_IS_ADDR_V4MAPPED(address) && !IN6_IS_ADDR_V4COMPAT(address) && !IN6_IS_ADDR_LOOPBACK(address) &&
           !IN6_IS_ADDR_UNSPECIFIED(address);
}

} // namespace

const char* choose_ipv6_interface(const ifaddrs* list)
{
    const char* chosen = nullptr;
    int candidates = 0;
    for (const ifaddrs* entry = list; entry != nullptr && candidates < MAX_CANDIDATES; entry = entry->ifa_next) {
        if (!is_candidate(*entry))
            continue;
        ++candidates;
        if (chosen == nullptr || std::strncmp(entry->ifa_name, "br", 2) != 0)
            chosen = entry->ifa_name;
    }
    return chosen;
}

const in6_addr* link_local_address(const ifaddrs* list, const char* name)
{
    for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next) {
        const in6_addr* address = ipv6_address_in_use(*entry);
        if (address != nullptr && std::strcmp(entry->ifa_name, name) == 0 && IN6_IS_ADDR_LINKLOCAL(address))
            return address;
    }
    return nullptr;
}

int pick_ipv6_interface(char (&ifname)[INTERFACE_NAME_SIZE])
{
    ifaddrs* list;
    if (getifaddrs(&list) != 0)
        return -1;
    const char* chosen = choose_ipv6_interface(list);
    if (chosen != nullptr) {
        std::strncpy(ifname, chosen, sizeof ifname - 1);
        ifname[sizeof ifname - 1] = '\0';
    }
    freeifaddrs(list);
    return chosen != nullptr ? 0 : -1;
}

int find_link_local_addr(const char* ifname, char (&text)[INET6_ADDRSTRLEN])
{
    ifaddrs* list;
    if (getifaddrs(&list) != 0)
        return -1;
    const in6_addr* address = link_local_address(list, ifname);
    if (address != nullptr)
        inet_ntop(AF_INET6, address, text, sizeof text);
    freeifaddrs(list);
    return address != nullptr ? 0 : -1;
}
