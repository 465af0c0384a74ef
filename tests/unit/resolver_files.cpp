#include "netinfo/resolver_files.h"

#include "cases.h"

// The name servers of a text that begins with the keyword.
template <AddressFamily FAMILY> static string servers_in(const string& text)
{
    NameServerSlots servers = {};
    const int count = take_resolver_text(FAMILY, reader_of("nameserver " + text), servers, 0);
    string texts;
    for (int i = 0; i < count; ++i)
        texts += address_text(servers[i]) + " ";
    return texts;
}

const Case IPV4_TEXTS[] = {
    {"not_the_keyword", "\nnameserver\t1.0.0.1\n nameserver 1.0.0.1\n", ""},
    {"not_this_device", "127.0.0.1\nNameServer 10.1\n", "10.0.0.1 "},
    {"failed_conversion_takes_a_slot", "1..0.1\nnameserver 7\nnameserver 1.0.0.1", "0.0.0.0 1.0.0.1 "},
    {"51st_character_of_the_line", times(32, "0") + "1.2.3.45", "1.2.3.4 "},
    {"line_of_255_characters", times(244, "x") + "nameserver 1.0.0.1", "1.0.0.1 "},
    {"ninth_server", times(9, "1.0.0.1\nnameserver "), times(8, "1.0.0.1 ")},
};

const Case IPV6_TEXTS[] = {
    {"dot_among_50_characters", "::2" + times(46, " ") + ".\nnameserver ::3" + times(47, " ") + ".", "::3 "},
    {"not_this_device", "::1\nnameserver 0::A", "::a "},
    {"failed_conversion_takes_no_slot", "1:2\nnameserver ::2", "::2 "},
    {"line_of_511_characters", times(500, "x") + "nameserver ::2", "::2 "},
};

CASES(Ipv4NameServers, servers_in<IPV4>, IPV4_TEXTS);
CASES(Ipv6NameServers, servers_in<IPV6>, IPV6_TEXTS);
