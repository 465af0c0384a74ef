#include "netinfo/resolver_files.h"

#include "cases.h"

// The IPv4 and then the IPv6 name servers of a text that begins with the keyword.
static string servers_in(const string& text)
{
    string texts;
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        NameServerSlots servers = {};
        const int count = take_resolver_text(family, reader_of("nameserver " + text), servers, 0);
        for (int i = 0; i < count; ++i)
            texts += address_text(servers[i]) + " ";
    }
    return texts;
}

const Case TEXTS[] = {
    {"not_the_keyword", "\nnameserver\t1.0.0.1\n nameserver 1.0.0.1\n", ""},
    {"not_this_device", "127.0.0.1\nNameServer 10.1\nnameserver ::1\nnameserver 0::A", "10.0.0.1 ::a "},
    {"failed_conversion_takes_an_ipv4_slot", "1..0.1\nnameserver 7\nnameserver 1:2\nnameserver ::2", "0.0.0.0 ::2 "},
    {"51st_character_of_an_ipv4_line", times(32, "0") + "1.2.3.45", "1.2.3.4 "},
    {"dot_among_50_characters", "::2" + times(46, " ") + ".\nnameserver ::3" + times(47, " ") + ".", "::3 "},
    {"ipv4_line_of_255_characters", times(244, "x") + "nameserver 1.0.0.1", "1.0.0.1 "},
    {"ipv6_line_of_511_characters", times(500, "x") + "nameserver ::2", "::2 "},
    {"ninth_server", times(9, "1.0.0.1\nnameserver "), times(8, "1.0.0.1 ")},
};

CASES(NameServers, servers_in, TEXTS);
