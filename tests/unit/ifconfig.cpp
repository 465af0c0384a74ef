#include "netinfo/ifconfig.h"

#include "cases.h"

namespace
{

// What the lines stored.
NetConfig config_from(const string& lines)
{
    NetConfig config = {};
    TextReader& reader = reader_of(lines);
    for (char line[IFCONFIG_LINE_SIZE]; read_piece(reader, line);)
        parse_ifconfig_line(line, config);
    return config;
}

string hardware_address(const string& line)
{
    const NetConfig config = config_from(line);
    string bytes;
    for (const int byte : config.hw_addr)
        bytes += std::to_string(byte) + " ";
    return bytes;
}

const Case HARDWARE_ADDRESSES[] = {
    {"of_either_case", "eth0  Link encap:Ethernet  HWaddr 0A:1b:fA:1d:0E:1f  \n", "10 27 250 29 14 31 "},
    {"with_missing_groups", "HWaddr 0A:1b", "10 27 0 0 0 0 "},
    {"that_is_missing", "HWaddr ", "0 0 0 0 0 0 "},
    {"with_other_characters", "HWaddr 9g:-1:1ff", "9 0 255 0 0 0 "},
    {"at_the_end_of_the_longest_line", times(2037, "x") + "HWaddr 0a", "10 0 0 0 0 0 "},
    {"cut_by_the_longest_line", times(2038, "x") + "HWaddr 0a", "0 0 0 0 0 0 "},
    {"replaces_a_longer_one", "HWaddr 01:02\nHWaddr 03", "3 0 0 0 0 0 "},
};

CASES(HardwareAddress, hardware_address, HARDWARE_ADDRESSES);

string ipv4_address(const string& lines)
{
    const NetConfig config = config_from(lines);
    return address_text(config.ipv4_addr) + " " + address_text(config.ipv4_mask);
}

const Case IPV4_ADDRESSES[] = {
    {"with_its_mask", "    inet addr:1.2.3.4  Bcast:1.2.3.255  Mask:255.255.255.0\n", "1.2.3.4 255.255.255.0"},
    {"kept_if_the_next_does_not_convert", "inet addr:1.2.3.4 Mask:255.0.0.0\ninet addr:1.2.3.400 Mask:\n",
     "1.2.3.4 255.0.0.0"},
    {"of_50_characters", "inet addr:" + times(42, "0") + "1.2.3.45 Mask:" + times(42, "0") + "1.2.3.45",
     "1.2.3.45 1.2.3.45"},
    {"cut_to_50_characters", "inet addr:" + times(43, "0") + "1.2.3.45 Mask:" + times(43, "0") + "1.2.3.45",
     "1.2.3.4 1.2.3.4"},
};

CASES(Ipv4Address, ipv4_address, IPV4_ADDRESSES);

string ipv6_address(const string& lines)
{
    const NetConfig config = config_from(lines);
    return address_text(config.ipv6_addr) + "/" + std::to_string(config.ipv6_prefix_len);
}

// ADDRESS/PREFIX.
string ipv6_item(const string& item)
{
    return ipv6_address("inet6 addr: " + item + " Scope:Global");
}

const string LONGEST = times(7, "1111:") + "1111";

const Case IPV6_ITEMS[] = {
    {"of_43_characters", LONGEST + "/128", LONGEST + "/128"},
    {"cut_to_43_characters", LONGEST + "/1289", LONGEST + "/128"},
    {"with_9_digits_of_prefix", "::7/0000000641", "::7/64"},
    {"with_a_prefix_modulo_65536", "::7/65600", "::7/64"},
    {"without_address", "/48", "0.0.0.0/48"},
    {"with_a_second_slash", "::7/64/1", "::7/14"},
    {"with_other_characters", "::7%t/6x4", "::7/64"},
    {"ends_at_a_carriage_return", "::7\r/64", "::7/0"},
    {"ends_at_a_blank", "::7 /64", "::7/0"},
};

CASES(Ipv6Item, ipv6_item, IPV6_ITEMS);

const Case IPV6_LINES[] = {
    {"not_of_the_link", "inet6 addr: fe80::7/6 Scope:Link\n", "0.0.0.0/0"},
    {"the_last_one", "inet6 addr: ::7/6 Scope:Global\ninet6 addr: ::8/48 Scope:Global\n", "::8/48"},
    {"keeps_the_address_only", "inet6 addr: ::7/6 Scope:Global\ninet6 addr: 1:2/48 Scope:Global\n", "::7/48"},
    {"drops_one_character_after_the_colon", "inet6 addr:1::7/64 Scope:Global", "::7/64"},
};

CASES(Ipv6Lines, ipv6_address, IPV6_LINES);

// The items of a line.
string items_of(const string& line)
{
    NetConfig config = {};
    const IfconfigItems items = parse_ifconfig_line(line.c_str(), config);
    return string(items.hardware_address ? "hardware " : "") + (items.ipv4_address ? "IPv4 " : "") +
           (items.global_ipv6_address ? "IPv6 " : "");
}

const Case LINES[] = {
    {"all", "HWaddr 01 inet addr:9.9.9.9 inet6 addr: ::7/9 Scope:Global", "hardware IPv4 IPv6 "},
    {"hardware_address_without_text", "HWaddr ", "hardware "},
    {"ipv4_address_that_does_not_convert", "inet addr:", "IPv4 "},
    {"no_ipv6_address_that_does_not_convert", "inet6 addr: 1:2/48 Scope:Global", ""},
    {"no_ipv6_address_at_the_end_of_the_line", "Scope:Global inet6 addr:", ""},
    {"no_link_local_address", "inet6 addr: fe80::7/6 Scope:Link", ""},
};

CASES(IfconfigItemsOf, items_of, LINES);

} // namespace
