#include "dns/source_interface.h"

#include <net/if.h>

#include "cases.h"

namespace
{

struct Entry {
    string interface;
    string address; // empty for an interface without one
    unsigned flags = IFF_UP;
};

using Entries = vector<Entry>;

// What the function says of the entries in the form that getifaddrs gives them.
template <typename Function> string with_list(const Entries& entries, Function function)
{
    vector<sockaddr_in6> addresses(entries.size());
    vector<ifaddrs> list(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const char* text = entries[i].address.c_str();
        const bool is_ipv6 = inet_pton(AF_INET6, text, &addresses[i].sin6_addr) == 1;
        addresses[i].sin6_family = is_ipv6 ? AF_INET6 : AF_INET;
        list[i].ifa_next = i + 1 < entries.size() ? &list[i + 1] : nullptr;
        list[i].ifa_name = const_cast<char*>(entries[i].interface.c_str());
        list[i].ifa_flags = entries[i].flags;
        list[i].ifa_addr = *text != '\0' ? reinterpret_cast<sockaddr*>(&addresses[i]) : nullptr;
    }
    return function(list.data());
}

string chosen(const Entries& entries)
{
    return with_list(entries, [](const ifaddrs* list) {
        const char* name = choose_ipv6_interface(list);
        return name != nullptr ? name : "none";
    });
}

Entries after_bridges(std::size_t count, const Entry& last)
{
    Entries entries(count, Entry{"br0", "1::1"});
    entries.push_back(last);
    return entries;
}

const CaseOf<Entries> CHOICES[] = {
    {"last_interface", {{"a", "1::1"}, {"b", "1::2"}}, "b"},
    {"no_later_bridge", {{"a", "1::1"}, {"br0", "1::2"}}, "a"},
    {"first_of_bridges", {{"br0", "1::1"}, {"br1", "1::2"}}, "br0"},
    {"bridge_in_lower_case_only", {{"a", "1::1"}, {"bR0", "1::2"}}, "bR0"},
    {"unique_local", {{"a", "fd00::1"}}, "a"},
    {"neither_down_nor_ipv4_nor_without_address", {{"a", "1::1", 0}, {"a", "1.0.0.1"}, {"a", ""}}, "none"},
    {"neither_link_local_nor_site_local", {{"a", "fe80::1"}, {"a", "fec0::1"}}, "none"},
    {"neither_mapped_nor_compatible", {{"a", "::ffff:1.0.0.1"}, {"a", "::1.0.0.1"}}, "none"},
    {"neither_loopback_nor_unspecified", {{"a", "::1"}, {"a", "::"}}, "none"},
    {"tenth_address", after_bridges(9, {"a", "1::2"}), "a"},
    {"not_the_eleventh_address", after_bridges(10, {"a", "1::2"}), "br0"},
};

CASES(ChosenInterface, chosen, CHOICES);

string link_local_of_a(const Entries& entries)
{
    return with_list(entries, [](const ifaddrs* list) {
        char text[INET6_ADDRSTRLEN];
        const in6_addr* address = link_local_address(list, "a");
        return address != nullptr ? inet_ntop(AF_INET6, address, text, sizeof text) : "none"s;
    });
}

const CaseOf<Entries> LINK_LOCALS[] = {
    {"first_of_two", {{"a", "1::1"}, {"a", "fe80::1"}, {"a", "fe80::2"}}, "fe80::1"},
    {"last_of_the_prefix", {{"a", "febf::1"}}, "febf::1"},
    {"of_exactly_this_name", {{"aa", "fe80::1"}, {"A", "fe80::2"}}, "none"},
    {"neither_down_nor_without_address", {{"a", "fe80::1", 0}, {"a", ""}}, "none"},
};

CASES(LinkLocalAddress, link_local_of_a, LINK_LOCALS);

} // namespace
