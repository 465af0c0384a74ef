#include "dns/source_interface.h"

#include <net/if.h>

#include <cstring>

#include "platform/text_field.h"

namespace
{

constexpr int MAX_CANDIDATES = 10;
constexpr char BRIDGE_PREFIX[] = "br";

// Returns the entry's IPv6 address, or null if its interface is down or its address is of another family.
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
        if (chosen == nullptr || std::strncmp(entry->ifa_name, BRIDGE_PREFIX, sizeof BRIDGE_PREFIX - 1) != 0)
            chosen = entry->ifa_name;
    }
    return chosen;
}

const in6_addr* link_local_address(const ifaddrs* list, const char* interface_name)
{
    for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next) {
        const in6_addr* address = ipv6_address_in_use(*entry);
        if (address != nullptr && std::strcmp(entry->ifa_name, interface_name) == 0 && IN6_IS_ADDR_LINKLOCAL(address))
            return address;
    }
    return nullptr;
}

int pick_ipv6_interface(InterfaceName& interface_name)
{
    ifaddrs* list;
    if (getifaddrs(&list) != 0)
        return -1;
    const char* chosen = choose_ipv6_interface(list);
    if (chosen != nullptr)
        copy_text(chosen, std::strlen(chosen), interface_name.text);
    freeifaddrs(list);
    return chosen != nullptr ? 0 : -1;
}

int find_link_local_addr(const char* interface_name, IpAddress& address)
{
    ifaddrs* list;
    if (getifaddrs(&list) != 0)
        return -1;
    const in6_addr* found = link_local_address(list, interface_name);
    if (found != nullptr) {
        address = {AddressFamily::IPV6, {}};
        std::memcpy(address.bytes, found, sizeof *found);
    }
    freeifaddrs(list);
    return found != nullptr ? 0 : -1;
}
