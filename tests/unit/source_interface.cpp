#include "dns/source_interface.h"

#include <net/if.h>

#include <list>
#include <sstream>

#include "cases.h"

struct Entry {
    string name;
    sockaddr_in6 address;
    ifaddrs head;
};

// The chosen interface, and the link-local address of a. The system's addresses are given as pairs NAME ADDRESS; the
// interface "down" is down.
static string choice(const string& pairs)
{
    ifaddrs without_address = {};
    without_address.ifa_flags = IFF_UP;
    ifaddrs* last = &without_address;
    std::list<Entry> entries;
    std::istringstream words(pairs);
    for (string name, address; words >> name >> address;) {
        Entry& entry = entries.emplace_back(Entry{name, {}, {}});
        const bool is_ipv6 = inet_pton(AF_INET6, address.c_str(), &entry.address.sin6_addr) == 1;
        entry.address.sin6_family = is_ipv6 ? AF_INET6 : AF_INET;
        entry.head.ifa_name = entry.name.data();
        entry.head.ifa_flags = name == "down" ? 0 : IFF_UP;
        entry.head.ifa_addr = reinterpret_cast<sockaddr*>(&entry.address);
        last = last->ifa_next = &entry.head;
    }
    const char* chosen = choose_ipv6_interface(&without_address);
    const in6_addr* link_local = link_local_address(&without_address, "a");
    char text[INET6_ADDRSTRLEN] = "";
    if (link_local != nullptr)
        inet_ntop(AF_INET6, link_local, text, sizeof text);
    return (chosen != nullptr ? chosen : "none") + " "s + text;
}

const Case ADDRESSES[] = {
    {"last_interface", "a 1::1 b 1::2", "b "},
    {"later_bridge", "a fd00::1 br0 1::1", "a "},
    {"tenth_address", times(9, "br0 1::1 ") + "a 1::2 b 1::3", "a "},
    {"down_or_ipv4", "down 1::1 a 1.0.0.1", "none "},
    {"not_global", "a fec0::1 a ::ffff:1.0.0.1 a ::1.0.0.1 a ::1 a ::", "none "},
    {"link_local_address_of_a", "aa fe80::1 A fe80::2 a 1::1 a fe80::3", "a fe80::3"},
};

CASES(SourceInterface, choice, ADDRESSES);
