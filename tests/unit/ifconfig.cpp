#include "netinfo/ifconfig.h"

#include <netinet/ether.h>

#include "cases.h"

// The items of the lines, with what is stored then.
static string ifconfig(const string& lines)
{
    NetConfig config = {};
    string found;
    TextReader& reader = reader_of(lines);
    for (char line[IFCONFIG_LINE_SIZE]; read_piece(reader, line);) {
        const IfconfigItems items = parse_ifconfig_line(line, config);
        if (items.hardware_address)
            found += ether_ntoa(reinterpret_cast<ether_addr*>(config.hw_addr)) + " "s;
        if (items.ipv4_address)
            found += address_text(config.ipv4_addr) + "/" + address_text(config.ipv4_mask) + " ";
        if (items.global_ipv6_address)
            found += address_text(config.ipv6_addr) + " ";
    }
    return found + std::to_string(config.ipv6_prefix_len);
}

static string global(const string& item)
{
    return "inet6 addr: " + item + " Scope:Global";
}

const string LONGEST = times(7, "1111:") + "1111";

const Case LINES[] = {
    {"hardware_address", "eth0  HWaddr 0a:1b:FA:1d:0E:9f  \nHWaddr 7g", "a:1b:fa:1d:e:9f 7:0:0:0:0:0 0"},
    {"line_of_2046_characters", times(2037, "x") + "HWaddr 0ab", "a:0:0:0:0:0 0"},
    {"ipv4_address_of_50_characters", "  inet addr:" + times(43, "0") + "1.2.3.45  Bcast:9.9.9.9  Mask:255.0.0.0\n",
     "1.2.3.4/255.0.0.0 0"},
    {"all_in_one_line", "inet addr:9.9.9.9 " + global("::7/9") + " HWaddr 01", "1:0:0:0:0:0 9.9.9.9/0.0.0.0 ::7 9"},
    {"link_local_address", "inet6 addr: fe80::7/6 Scope:Link\n", "0"},
    {"ipv6_address_of_44_characters", global(LONGEST + "/1289"), LONGEST + " 128"},
    {"prefix_of_10_digits", global("::7/0000000641"), "::7 64"},
    {"second_slash_and_other_characters", global("::7%t/64/x1"), "::7 14"},
};

CASES(Ifconfig, ifconfig, LINES);
