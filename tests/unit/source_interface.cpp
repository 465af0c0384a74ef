#include "dns/source_interface.h"

#include <net/if.h>

#include "cases.h"

struct Entry {
    const char* interface;
    const char* address; // of either family
    unsigned flags = IFF_UP;
};

using Entries = vector<Entry>;

// The chosen interface, and the link-local address of a.
static string choice(const Entries& entries)
{
    vector<sockaddr_in6> addresses(entries.size());
    vector<ifaddrs> list(entries.size() + 1);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const bool is_ipv6 = inet_pton(AF_INET6, entries[i].address, &addresses[i].sin6_addr) == 1;
        addresses[i].sin6_family = is_ipv6 ? AF_INET6 : AF_INET;
        list[i].ifa_next = &list[i + 1];
        list[i].ifa_name = const_cast<char*>(entries[i].interface);
        list[i].ifa_flags = entries[i].flags;
        list[i].ifa_addr = reinterpret_cast<sockaddr*>(&addresses[i]);
    }
    list.back().ifa_flags = IFF_UP; // an interface without an address
    const char* name = choose_ipv6_interface(list.data());
    const in6_addr* link_local = link_local_address(list.data(), "a");
    char text[INET6_ADDRSTRLEN] = "";
    if (link_local != nullptr)
        inet_ntop(AF_INET6, link_local, text, sizeof text);
    return (name != nullptr ? name : "none") + " "s + text;
}

const Entry BRIDGE = {"br0", "1::1"};

const CaseOf<Entries> LISTS[] = {
    {"last_interface", {{"a", "1::1"}, {"b", "1::2"}}, "b "},
    {"later_bridge", {{"a", "fd00::1"}, BRIDGE}, "a "},
    {"ten",
     {BRIDGE, BRIDGE, BRIDGE, BRIDGE, BRIDGE, BRIDGE, BRIDGE, BRIDGE, BRIDGE, {"a", "1::2"}, {"b", "1::3"}},
     "a "},
    {"down_or_ipv4", {{"a", "1::1", 0}, {"a", "1.0.0.1"}}, "none "},
    {"not_global", {{"a", "fec0::1"}, {"a", "::ffff:1.0.0.1"}, {"a", "::1.0.0.1"}, {"a", "::1"}, {"a", "::"}}, "none "},
    {"first_link_local", {{"b", "1::1"}, {"a", "fe80::1"}, {"a", "fe80::2"}}, "b fe80::1"},
    {"other_link_locals", {{"aa", "fe80::1"}, {"A", "fe80::2"}, {"a", "fe80::3", 0}}, "none "},
};

CASES(SourceInterface, choice, LISTS);
