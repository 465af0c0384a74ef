#include "dns/source_interface.h"

#include <net/if.h>

#include <sstream>

#include "cases.h"

// The chosen interface, and the link-local address of a. The system's addresses are given as pairs NAME ADDRESS; the
// interface "down" is down.
static string choice(const string& pairs)
{
    string names[13];
    sockaddr_in6 addresses[13] = {};
    ifaddrs list[13] = {}; // begins with an interface without an address
    list[0].ifa_flags = IFF_UP;
    std::istringstream words(pairs);
    string address;
    for (int i = 1; words >> names[i] >> address; ++i) {
        const bool is_ipv6 = inet_pton(AF_INET6, address.c_str(), &addresses[i].sin6_addr) == 1;
        addresses[i].sin6_family = is_ipv6 ? AF_INET6 : AF_INET;
        list[i].ifa_name = names[i].data();
        list[i].ifa_flags = names[i] == "down" ? 0 : IFF_UP;
        list[i].ifa_addr = reinterpret_cast<sockaddr*>(&addresses[i]);
        list[i - 1].ifa_next = &list[i];
    }
    const char* chosen = choose_ipv6_interface(list);
    const in6_addr* link_local = link_local_address(list, "a");
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
