// Tests of what is sent to the network and of what comes from it.
#include <net/if.h>

#include "dns/dns_message.h"
#include "dns/source_interface.h"
#include "probe/ipv4_address_class.h"
#include "probe/probe_document.h"
#include "probe/probe_url.h"
#include "rows.h"

namespace
{

// The address in a response that announces NUMBER answers and holds RECORDs: '0' + type, '0' + length, data.
template <AddressFamily FAMILY> string answer(const string& number_and_records)
{
    std::istringstream records(number_and_records.substr(number_and_records.find(' ')));
    string message =
        "??\x81\x83\0\1\0"s + static_cast<char>(std::stoi(number_and_records)) + "\0\0\0\0\1v\7example\0\0\1\0\1"s;
    for (string record; records >> record;)
        message += "\xC0\x0C\0"s + static_cast<char>(record[0] - '0') + "\0\1\0\0\0\1\0"s +
                   static_cast<char>(record[1] - '0') + record.substr(2);
    const std::vector<unsigned char> octets(message.begin(), message.end());
    in6_addr address;
    return dns_find_address(octets.data(), octets.size(), FAMILY, &address) ? address_text(FAMILY, &address) : "none";
}

TEST(DnsMessage, AsksForANameAndFindsTheFirstFittingAnswer)
{
    expect_rows("v.example -> \1v\7example\0\0\1 | 6 -> \0016\0\0\x1C | a.b. -> \1a\1b\0\0\1 | a..b -> \1a\0\0\1 | "
                "{126*a} -> \x7E{126*a}\0\0\1 | {127*a} -> \0\0\1 | {126*a}.b -> \x7E{126*a}\0\0\1 | .a -> \0\0\1 | "
                "{124*a}.b -> \x7C{124*a}\1b\0\0\1 | {125*a}.b -> \x7D{125*a}\0\0\1 |  -> \0\0\1"s,
                [](const string& host) { // of 126 characters it is whole and has its dot behind it
                    unsigned char octets[DNS_QUERY_SIZE];
                    const AddressFamily family = host == "6" ? IPV6 : IPV4;
                    const string query(octets, octets + dns_build_query(octets, 0xABCD, host.c_str(), family));
                    const std::size_t tail = query.size() - 2;
                    EXPECT_EQ(query.substr(0, 12) + query.substr(tail), "\xAB\xCD\1\0\0\1\0\0\0\0\0\0\0\1"s);
                    return query.substr(12, tail - 12);
                });
    expect_rows("?\1v\7example\0? -> 11 | ?\xC0\0? -> 2 | ?\1v\xFF\0? -> 4 | ?\xBF{191*a}\0 -> 193 | ?\0 -> 1 | "
                "?\xC0 -> 0 | ?\1v\xC0 -> 0 | ?\1v -> 0 | ?\5v -> 0 | ?\xBF{190*a} -> 0 | ? -> 0 |  -> 0"s,
                [](const string& message) {
                    const std::vector<unsigned char> octets(message.begin(), message.end());
                    return std::to_string(dns_skip_name(octets.data(), octets.size(), 1));
                });
    expect_rows("2 14!!!! 14~~~~ -> 33.33.33.33 | 2 58\5alias\xC0. 14!!!! -> 33.33.33.33 | 2 14!!! -> none | "
                "2 @~\1t\xFF. 14!!!! -> 33.33.33.33 | 2 L@{16*6} 14!!!! -> 33.33.33.33 | 1 L@{16*6} -> none | "
                "2 13~~~ 14!!!! -> 33.33.33.33 | 1 18!!!!more -> 33.33.33.33 | 0 14!!!! -> none | 2 15!!!! -> none | "
                "99 52\xC0. 14!!!! -> 33.33.33.33 | 99 52\xC0. -> none | 9 52\xC0 -> none | 1 52\xC0. 14!!!! -> none | "
                "20 {19*52\xC0. }14!!!! -> 33.33.33.33 | 21 {20*52\xC0. }14!!!! -> none",
                answer<IPV4>);
    expect_rows("2 14!!!! L@{16*!} -> {7*2121:}2121 | 2 L?{15*!} L@{16*A} -> {7*4141:}4141 | 1 L@{15*!} -> none",
                answer<IPV6>);
}

// The chosen interface and the link-local address of a from a list of NAME=ADDRESS, of NAME!ADDRESS when it is down.
string interface_choice(const string& list)
{
    std::istringstream stream(list);
    std::vector<string> items{std::istream_iterator<string>(stream), {}};
    std::vector<sockaddr_in6> addresses(items.size());
    std::vector<ifaddrs> entries(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        char* mark = &items[i][items[i].find_first_of("=!")];
        addresses[i].sin6_family = inet_pton(AF_INET6, mark + 1, &addresses[i].sin6_addr) == 1 ? AF_INET6 : AF_INET;
        entries[i].ifa_next = i + 1 < items.size() ? &entries[i + 1] : nullptr;
        entries[i].ifa_flags = *mark == '=' ? IFF_UP : 0;
        entries[i].ifa_addr = mark[1] != '\0' ? reinterpret_cast<sockaddr*>(&addresses[i]) : nullptr;
        entries[i].ifa_name = items[i].data();
        *mark = '\0';
    }
    const char* chosen = choose_ipv6_interface(entries.data());
    const in6_addr* link_local = link_local_address(entries.data(), "a");
    return (chosen != nullptr ? chosen : "-"s) + (link_local != nullptr ? " " + address_text(IPV6, link_local) : "");
}

TEST(SourceInterface, IsChosenFromTheAddressList)
{
    expect_rows(
        " -> - | br0=1::1 eth1=1::2 -> eth1 | br0=1::1 br1=1::2 -> br0 | eth0=1::1 br0=1::2 -> eth0 | "
        "a=1::1 b=1::2 -> b | a=1::1 Br0=1::2 -> Br0 | a!1::1 a=1.0.0.1 a= -> - | a=fd00::1 -> a | "
        "b=fe80::1 a=fec0::1 a=::ffff:1.0.0.1 a=::1.0.0.1 a=::1 a=:: -> - | {9*br0=1::1 }a=1::2 -> a | "
        "{10*br0=1::1 }a=1::2 -> br0 | {10*br0=fe80::1 }a=1::2 -> a | a=1::1 a=fe80::1 a=fe80::2 -> a fe80::1 | "
        "aa=fe80::1 A=fe80::2 a!fe80::3 a= a=febf::4 -> - febf::4",
        interface_choice);
}

TEST(Probe, TargetIsReadFromTexts)
{
    expect_rows("9.255.255.255 -> 4 | 10.0.0.0 -> 1 | 11.0.0.0 -> 4 | 172.15.255.255 -> 4 | 172.16.0.0 -> 2 | "
                "172.32.0.0 -> 4 | 192.167.255.255 -> 4 | 192.168.0.0 -> 3 | 192.169.0.0 -> 4 | 0.0.0.0 -> 0 | "
                "0.0.0.1 -> 4 | 255.255.255.254 -> 4 | 255.255.255.255 -> 0 | 10.0.0.256 -> 0 |  -> 0",
                [](const string& address) { return std::to_string(classify_ipv4_address(address.c_str())); });
    expect_rows(
        "http://a:8080/c/d -> a 8080 /c/d | http://a -> a 80 / | http://a/x:1/y z -> a 80 /x:1/y | "
        "http://a:65536 -> a 80 / | http://a:65617 -> a 81 / | http://a:-1 -> a 65535 / | http://a:81b:82 -> a 81 / | "
        "http://[1:b::]/x -> [1 80 /x | http:///x ->  80 /x | http:// \t\r\n\v\fa/x\n -> a 80 /x | http://  ->  80 / | "
        "http://{1009*h} -> {1009*h} 80 / | http://a/{1007*p} -> a 80 /{1007*p} | http:// -> refused | "
        "HTTP://a -> refused |  http://a -> refused | https://a -> refused | http://a: -> a 80 /",
        [](const string& text) {
            ProbeUrl url;
            const bool accepted = split_probe_url(text.c_str(), url);
            return accepted ? url.host + " "s + std::to_string(url.port) + " " + url.path : "refused";
        });
    // Lines of 1023 characters; the one that gives the second value is the last; a line feed is part of a value.
    expect_rows(
        "# x\r\ncheckserver=c\r\nxmluri=x\r\n -> [c][x] | xmluri=x\n -> [][x\n] | xmluri= x \x0Fy\n -> [][ x ] | "
        "xmluri=x\ry\x0F\n -> [][x] | XMLURI=x\n xmluri=x\nxmluri =x\n#xmluri=x\nxmlurix\n -> [][] | "
        "xmluri=longer\r\nxmluri=x\r\n -> [][x] | xmluri=1\r\nxmluri=\r\n -> [][] |  -> [][] | "
        "xmluri=1\nxmluri=2\ncheckserver=c\nxmluri=3\n -> [c\n][2\n] | {1022*x}xmluri=u -> [][] | "
        "checkserver=c\r\nxmluri=\r\nxmluri=2\r\ncheckserver=d\r\n -> [c][2] | "
        "xmluri={1016*u}checkserver=c -> [c][{1016*u}] | checkserver={1011*c}xmluri=u -> [{1011*c}][u]",
        [](const string& text) {
            const ProbeConfig config = parse_probe_config(reader_of(text));
            return "["s + config.checkserver + "][" + config.xmluri + "]";
        });
}

TEST(ProbeDocument, ChunkMustHoldItWithTheDigestOfItsDate)
{
    expect_rows("{32*1}  -\n -> {32*1} | {31*1} ->  | {32*1}  -\n{32*2}\nx\n -> {32*2} | sh: md5sum: not found\n ->  | "
                "{511*1}{32*2} -> {32*2} | {512*1}{31*2} -> 1{31*2}",
                [](const string& output) {
                    char digest[DIGEST_FIELD_SIZE] = "";
                    take_digest(reader_of(output), digest);
                    return string(digest);
                });
    // Changes FROM=>TO of a good document; digests of other dates from another implementation.
    expect_rows(
        "x=>x -> yes | d24f=>D24F -> yes | 9001=>8001 -> no | f72=>f7 -> no | f72=>f720 -> no | \t<=> < -> no | "
        ">90=>> 90 -> no | abc\"=>abc\" a=\"b\" -> no | <tolvane=><Tolvane -> no | \"1.0\"=>'1.0' -> no | "
        "UTF-8=>utf-8 -> no | 900150983cd24fb0d6963f7d28e17f72=> -> no | </checksum>\n</tolvane>=> -> yes | "
        "</checksum>=> -> no | >\n\t=>>\n\0\t -> no | HTTP=><tolvane date=\"x\"> -> no | "
        "HTTP=>\t<checksum>900150983cd24fb0d6963f7d28e17f72</checksum> -> yes | HTTP=>\t<checksum>x -> no | "
        "abc=>&900150983cd24fb0d6963f7d28e17f72=>d41d8cd98f00b204e9800998ecf8427e -> no | "
        "abc=>-n&900150983cd24fb0d6963f7d28e17f72=>9cefd96d40d0ee1256c8eff1def0312d -> yes | "
        "abc=>a'$(id)`id`\\n\\\\ \"%s&900150983cd24fb0d6963f7d28e17f72=>f7eaa60c243e6829316253230eec5c6d -> yes | "
        "abc=>01234567890123456789more&900150983cd24fb0d6963f7d28e17f72=>be497c2168e374f414a351c49379c01a -> yes | "
        "abc=>\x80\x81\x82\x88\x98\xFF&900150983cd24fb0d6963f7d28e17f72=>e069f96ca7b300c0c3f5f2beeb75d3a0 -> yes"s,
        [](const string& changes) {
            string chunk = "HTTP/1.0 404\r\n\r\n<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<tolvane date=\"abc\">\n\t"
                           "<checksum>900150983cd24fb0d6963f7d28e17f72</checksum>\n</tolvane>";
            std::istringstream stream(changes + "&");
            for (string from, to; std::getline(stream, from, '=') && std::getline(stream.ignore(), to, '&');)
                chunk.replace(chunk.find(from), from.size(), to);
            return verify_probe_chunk(chunk.c_str()) ? "yes" : "no";
        });
}

} // namespace
