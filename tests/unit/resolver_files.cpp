#include "netinfo/resolver_files.h"

#include "cases.h"

namespace
{

// The addresses of a text that begins with the keyword.
template <AddressFamily FAMILY> string servers_in(const string& text)
{
    NameServerSlots servers;
    for (IpAddress& server : servers)
        server = {FAMILY, {}};
    const int count = take_resolver_text(FAMILY, reader_of("nameserver " + text), servers, 0);
    string texts;
    for (int i = 0; i < count; ++i)
        texts += address_text(servers[i]) + " ";
    return texts;
}

const Case IPV4_TEXTS[] = {
    {"keyword_in_either_case", "1.0.0.1\n# x\nNameServer 1.0.0.2\n", "1.0.0.1 1.0.0.2 "},
    {"one_blank_after_the_keyword", "\nnameserver\t1.0.0.1\nnameserver  1.0.0.1\nnameserver1.0.0.1", ""},
    {"keyword_at_the_start_of_the_line", "\n nameserver 1.0.0.1\n", ""},
    {"not_this_device", "127.0.0.1\nnameserver 127.0.0.2\n", "127.0.0.2 "},
    {"not_without_a_dot", "::1\nnameserver 7", ""},
    {"short_form", "10.1", "10.0.0.1 "},
    {"octal_form", "1.0.2.010", "1.0.2.8 "},
    {"slot_of_a_failed_conversion", "1..0.1\nnameserver 1.0.0.1", "0.0.0.0 1.0.0.1 "},
    {"up_to_the_50th_character_of_the_line", times(31, "0") + "1.2.3.45", "1.2.3.45 "},
    {"cut_after_the_50th_character", times(32, "0") + "1.2.3.45", "1.2.3.4 "},
    {"line_of_255_characters", times(243, "x") + "nameserver 1.0.0.1", ""},
    {"after_255_characters", times(244, "x") + "nameserver 1.0.0.1", "1.0.0.1 "},
    {"eight", "1.0.0.1\n" + times(7, "nameserver 1.0.0.1\n") + "nameserver 1.0.0.9", times(8, "1.0.0.1 ")},
};

const Case IPV6_TEXTS[] = {
    {"either_case_up_to_a_carriage_return", "2001:DB8::1\r\n", "2001:db8::1 "},
    {"no_dot_in_the_address", "::ffff:1.0.0.1\n", ""},
    {"no_dot_among_the_next_50_characters", "::2" + times(46, " ") + ".", ""},
    {"dot_after_50_characters", "::2" + times(47, " ") + ".", "::2 "},
    {"without_its_scope", "fe80::1%eth0", "fe80::1 "},
    {"not_this_device", "::1\nnameserver 0::1", "::1 "},
    {"no_slot_for_a_failed_conversion", "1:2\nnameserver ::2", "::2 "},
    {"line_of_511_characters", times(499, "x") + "nameserver ::2", ""},
    {"after_511_characters", times(500, "x") + "nameserver ::2", "::2 "},
    {"eight", "::2\n" + times(7, "nameserver ::2\n") + "nameserver ::9", times(8, "::2 ")},
};

CASES(Ipv4NameServers, servers_in<IPV4>, IPV4_TEXTS);
CASES(Ipv6NameServers, servers_in<IPV6>, IPV6_TEXTS);

} // namespace
