#include "netinfo/default_routes.h"

#include "cases.h"

template <AddressFamily FAMILY> static string eth0_gateway(const string& table)
{
    IpAddress gateway;
    return find_gateway(FAMILY, reader_of(table), {"eth0"}, gateway) ? address_text(gateway) : "none";
}

// A line of /proc/net/route, which prints an address as a number of this machine.
static string ipv4_route(const string& device, const char* gateway, const char* flags)
{
    char line[129];
    std::snprintf(line, sizeof line, "%s\t00000000\t%08X\t%s%100s", device.c_str(), inet_addr(gateway), flags, "\n");
    return line;
}

const string IPV4_GOOD = ipv4_route("eth0", "1.2.3.4", "0003");

const Case IPV4_TABLES[] = {
    {"first_of_two", IPV4_GOOD + ipv4_route("eth0", "9.9.9.9", "0003"), "1.2.3.4"},
    {"other_device_before_it", "Iface\n" + ipv4_route("eth", "9.9.9.9", "0003") + IPV4_GOOD, "1.2.3.4"},
    {"name_within_the_device", ipv4_route("abcdefghijketh0", "1.2.3.4", "0003"), "1.2.3.4"},
    {"host", ipv4_route("eth0", "9.9.9.9", "0007"), "none"},
    {"flags_of_4_digits", ipv4_route("eth0", "1.2.3.4", "00031"), "1.2.3.4"},
    {"piece_of_55_characters", times(55, "x") + IPV4_GOOD, "1.2.3.4"},
    {"rest_of_a_piece", times(54, "x") + IPV4_GOOD, "none"},
};

// A line of /proc/net/ipv6_route, which prints an address as bytes.
static string ipv6_route(const string& device, const string& flags)
{
    const string zeros = times(32, "0") + " 00 ";
    const string next_hop = "fe80" + times(24, "0") + "0102";
    return zeros + zeros + next_hop + " 00000400 00000001 00000000 " + flags + " " + device + "\n";
}

const string IPV6_GOOD = ipv6_route("    eth0", "00000003");

const Case IPV6_TABLES[] = {
    {"other_device_before_it", ipv6_route("   wlan0", "00000003") + IPV6_GOOD, "fe80::102"},
    {"learned_from_a_router", ipv6_route("    eth0", "00010003"), "none"},
    {"device_cut_to_8_characters", ipv6_route("uplink-eth0", "00000003"), "none"},
    {"device_of_8_characters", ipv6_route("veth0-up", "00000003"), "fe80::102"},
    {"rest_of_a_device_ends_the_table", ipv6_route("uplink-0-eth0", "00000003") + IPV6_GOOD, "none"},
    {"blank_line", " \n" + IPV6_GOOD, "fe80::102"},
};

CASES(Ipv4Gateway, eth0_gateway<IPV4>, IPV4_TABLES);
CASES(Ipv6Gateway, eth0_gateway<IPV6>, IPV6_TABLES);
