#include "netinfo/default_routes.h"

#include "cases.h"

// The gateway of eth0 in a table of either family.
static string eth0_gateway(const string& table)
{
    string found;
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        IpAddress gateway;
        if (find_gateway(family, reader_of(table), {"eth0"}, gateway))
            found += address_text(gateway);
    }
    return found;
}

// A line of /proc/net/route. This gateway is the same in any byte order.
static string ipv4_route(const string& device, const string& flags)
{
    return device + "\t00000000\t01010101\t" + flags + "\t0\t0\t0\t00000000\n";
}

// A line of /proc/net/ipv6_route, which prints an address as bytes.
static string ipv6_route(const string& device, const string& flags)
{
    const string zeros = times(32, "0") + " 00 ";
    const string next_hop = "fe80" + times(24, "0") + "0102";
    return zeros + zeros + next_hop + " 00000400 00000001 00000000 " + flags + " " + device + "\n";
}

const string IPV4_GOOD = ipv4_route("eth0", "0003");
const string IPV6_GOOD = ipv6_route("    eth0", "00000003");

const Case TABLES[] = {
    {"first_match", "Iface\n" + ipv4_route("eth", "0003") + IPV4_GOOD + "eth0\t0\t02020202\t0003", "1.1.1.1"},
    {"device_with_the_name_in_it", ipv4_route("eth0.2", "0003"), "1.1.1.1"},
    {"route_to_a_host", ipv4_route("eth0", "0007"), ""},
    {"flags_of_4_digits", ipv4_route("eth0", "00031"), "1.1.1.1"},
    {"piece_of_55_characters", times(55, "x") + IPV4_GOOD, "1.1.1.1"},
    {"rest_of_a_piece", times(54, "x") + IPV4_GOOD, ""},
    {"ipv6", ipv6_route("   wlan0", "00000003") + IPV6_GOOD, "fe80::102"},
    {"rest_of_a_device_ends_the_table", ipv6_route("uplink-0-eth0", "00000003") + IPV6_GOOD, ""},
};

CASES(Gateway, eth0_gateway, TABLES);
