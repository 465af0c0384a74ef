#include "netinfo/default_routes.h"

#include "cases.h"

namespace
{

template <AddressFamily FAMILY> string eth0_gateway(const string& table)
{
    IpAddress gateway;
    return find_gateway(FAMILY, reader_of(table), {"eth0"}, gateway) ? address_text(gateway) : "none";
}

// A line of /proc/net/route (fib_route_seq_show), which prints an address as a number of the host's byte order.
string ipv4_route(const string& device, const string& gateway, const string& flags)
{
    char number[9];
    std::snprintf(number, sizeof number, "%08X", inet_addr(gateway.c_str()));
    string line = device + "\t00000000\t" + number + "\t" + flags + "\t0\t0\t0\t00000000\t0\t0\t0";
    line.resize(127, ' ');
    return line + "\n";
}

const string IPV4_GOOD = ipv4_route("eth0", "1.2.3.4", "0003");

const Case IPV4_TABLES[] = {
    {"after_the_header", "Iface\tDestination\tGateway\n" + IPV4_GOOD, "1.2.3.4"},
    {"first_of_two", IPV4_GOOD + ipv4_route("eth0", "9.9.9.9", "0003"), "1.2.3.4"},
    {"of_this_device", ipv4_route("wlan0", "9.9.9.9", "0003") + ipv4_route("eth", "9.9.9.9", "0003"), "none"},
    {"of_a_device_that_contains_the_name", ipv4_route("veth0.2", "1.2.3.4", "0003"), "1.2.3.4"},
    {"of_a_name_of_15_characters", ipv4_route("abcdefghijketh0", "1.2.3.4", "0003"), "1.2.3.4"},
    {"not_without_gateway", ipv4_route("eth0", "9.9.9.9", "0001"), "none"},
    {"not_to_a_host", ipv4_route("eth0", "9.9.9.9", "0007"), "none"},
    {"not_down", ipv4_route("eth0", "9.9.9.9", "0002"), "none"},
    {"with_flags_of_4_digits", ipv4_route("eth0", "1.2.3.4", "00031"), "1.2.3.4"},
    {"with_addresses_of_8_digits", "eth0 00000000" + ipv4_route("", "1.2.3.4", "0003").substr(10), "1.2.3.4"},
    {"after_55_characters", times(55, "x") + IPV4_GOOD, "1.2.3.4"},
    {"not_after_54_characters", times(54, "x") + IPV4_GOOD, "none"},
};

CASES(Ipv4Gateway, eth0_gateway<IPV4>, IPV4_TABLES);

// A line of /proc/net/ipv6_route (rt6_info_route).
string ipv6_route(const string& device, char last_digit, const string& flags)
{
    const string zeros = times(32, "0");
    const string gateway = "fe80" + times(27, "0") + last_digit;
    return zeros + " 00 " + zeros + " 00 " + gateway + " 00000400 00000001 00000000 " + flags + " " + device + "\n";
}

const string IPV6_GOOD = ipv6_route("    eth0", '1', "00000003");

const Case IPV6_TABLES[] = {
    {"first_of_two", IPV6_GOOD + ipv6_route("    eth0", '9', "00000003"), "fe80::1"},
    {"of_this_device", ipv6_route("   wlan0", '9', "00000003") + IPV6_GOOD, "fe80::1"},
    {"of_a_device_that_contains_the_name", ipv6_route("veth0-uplink", '1', "00000003"), "fe80::1"},
    {"not_without_gateway", ipv6_route("    eth0", '9', "00000001") + IPV6_GOOD, "fe80::1"},
    {"not_made_by_an_advertisement", ipv6_route("    eth0", '9', "00010003") + IPV6_GOOD, "fe80::1"},
    {"of_a_name_cut_after_8_characters", ipv6_route("uplink-0eth0", '9', "00000003") + IPV6_GOOD, "fe80::1"},
    {"ends_at_the_rest_of_a_long_name", ipv6_route("uplink-0-eth0", '9', "00000003") + IPV6_GOOD, "none"},
    {"after_149_characters", times(149, "0") + IPV6_GOOD, "fe80::1"},
    {"after_a_blank_line", " \n" + IPV6_GOOD, "fe80::1"},
    {"not_in_a_cut_line", IPV6_GOOD.substr(0, 149 - 8 - 9) + "\n", "none"},
};

CASES(Ipv6Gateway, eth0_gateway<IPV6>, IPV6_TABLES);

} // namespace
