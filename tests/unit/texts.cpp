// Tests of the texts of the device: arguments, files, tables of the kernel, what goes to the shell and comes from it.
#include <cstring>

#include "cli/command_line.h"
#include "cli/result_file.h"
#include "netinfo/default_routes.h"
#include "netinfo/hex.h"
#include "netinfo/ifconfig.h"
#include "netinfo/resolver_files.h"
#include "netinfo/terminal_scan.h"
#include "platform/shell_word.h"
#include "rows.h"

namespace
{

TEST(Shell, TakesWordsAsTheyAreAndGivesPieces)
{
    expect_rows("123456\\n7 -> [123456\n][7] | 1234567\\n8 -> [1234567][\n][8] | a\\n\\nb -> [a\n][\n][b] |  ->  | "
                "1\\n{4094*a}bc -> [1\n]{584*[aaaaaaa]}[aaaaaab][c] | a\\0b\\nc -> [a][c] | 'a''b' -> ['a''b'] | "
                "~ $(id) -> [~ $(id)] | `id` \" * -> [`id` \" ][*] | ;\\\\\n#' -> [;\\\n][#'] | -n -> [-n]",
                [](const string& text) {
                    std::vector<char> word(4 * text.size() + 3);
                    EXPECT_GT(quote_shell_word(text.c_str(), word.data(), word.size()), 0U);
                    ShellPipe pipe;
                    EXPECT_TRUE(open_shell_pipe(("printf %b "s + word.data()).c_str(), pipe));
                    string pieces;
                    for (char piece[8]; read_piece(pipe.reader, piece);)
                        pieces += "["s + piece + "]";
                    close_shell_pipe(pipe);
                    return pieces;
                });
}

// The items of each line (1 hardware, 2 IPv4 address, 4 global IPv6 address) and what they stored.
string ifconfig(const string& lines)
{
    NetConfig config = {};
    string text;
    TextReader& reader = reader_of(lines);
    for (char line[IFCONFIG_LINE_SIZE]; read_piece(reader, line);) {
        const IfconfigItems items = parse_ifconfig_line(line, config);
        text += std::to_string(items.hardware_address + 2 * items.ipv4_address + 4 * items.global_ipv6_address);
    }
    for (const int byte : config.hw_addr)
        text += byte == 0 ? "" : ":" + std::to_string(byte);
    for (const in_addr& address : {config.ipv4_addr, config.ipv4_mask})
        text += is_unset(IPV4, &address) ? "" : " " + address_text(IPV4, &address);
    text += is_unset(IPV6, &config.ipv6_addr) ? "" : " " + address_text(IPV6, &config.ipv6_addr);
    return text + (config.ipv6_prefix_len == 0 ? "" : "/" + std::to_string(config.ipv6_prefix_len));
}

TEST(Ifconfig, LineStoresWhatItNames)
{
    expect_rows("0a:1b -> 10 | FF -> 255 | ff -> 255 | 1ff -> 255 | 123 -> 35 | :12 -> 0 | 9g -> 9 |  -> 0",
                [](const string& text) { return std::to_string(hex_to_byte(text.c_str())); });
    expect_rows(" \t\n0fFz -> 255z | 1000000012 -> 26843545612 | x1 -> x1 |  -> ", [](const string& text) {
        const char* rest = text.c_str();
        std::uint32_t value;
        const string number = take_hex(rest, 8, value) ? std::to_string(value) : "";
        return number + rest;
    });
    expect_rows(
        "eth0      Link encap:Ethernet  HWaddr 0A:1b:0C:1d:0E:1f  \n -> 1:10:27:12:29:14:31 | "
        "HWaddr 0A:1b -> 1:10:27 | HWaddr  -> 1 | {2039*x}HWaddr 0a -> 10 | {2040*x}HWaddr 0a -> 00 | "
        "          inet addr:1.2.3.4  Bcast:1.2.3.255  Mask:255.255.255.0\n -> 2 1.2.3.4 255.255.255.0 | "
        "inet addr:1.2.3.4 Mask:255.0.0.0\ninet addr:1.2.3.400 Mask:\n -> 22 1.2.3.4 255.0.0.0 | "
        "inet addr:{42*0}1.2.3.45 Mask:{43*0}1.2.3.45 -> 2 1.2.3.45 1.2.3.4 | Scope:Global inet6 addr: -> 0 | "
        "HWaddr 01:02:03:04:05:06 inet addr:9.9.9.9 inet6 addr: ::7/9 Scope:Global -> 7:1:2:3:4:5:6 9.9.9.9 ::7/9 | "
        "inet6 addr: fe80::7/6 Scope:Link\n -> 0 | inet6 addr:1::7/64 Scope:Global -> 4 ::7/64",
        ifconfig);
    // 43 characters are examined, 9 of the prefix length taken; other characters than digits and colons are skipped.
    expect_rows(
        "{7*1111:}1111/1289 -> 4 {7*1111:}1111/128 | ::7/0000000641 -> 4 ::7/64 | ::7/65600 -> 4 ::7/64 | "
        "/48 -> 0/48 | ::7/64/1 -> 4 ::7/14 | ::7%t/6x4 -> 4 ::7/64 | ::7\r/64 -> 4 ::7 | "
        "::7/6 Scope:Global\ninet6 addr: ::8/48 -> 44 ::8/48 | ::7/6 Scope:Global\ninet6 addr: 1:2/48 -> 40 ::7/48",
        [](const string& item) { return ifconfig("inet6 addr: " + item + " Scope:Global"); });
}

TEST(TerminalScan, ListIsSplitAndFirstInterfaceWithAnAddressSelected)
{
    // LIST;LINES, the lines of each interface given by their items -> the names, the result and the selected name.
    expect_rows(
        "eth0, wlan0,;0 2 -> eth0 wlan0 1wlan0 | ,,a, ,_,b; -> a b 3- | ,_; -> 3- | a,b,c,d,e,f; -> a b c d e 3- | "
        "eth_1,et\xC3\xA4h:2; -> eth1 eth2 3- | aZ09.-/; -> aZ09.-/ 3- | {14*a},{9*b}_{5*b}; -> {14*a} {14*b} 3- | "
        "{15*a},a,b,c,d,e; -> a b c d e 3- | a;1 -> a 2- | a;2 -> a 1a | a;4 -> a 16a | a;12 -> a 1a | "
        "a;14 -> a 16a | a;7 -> a 17a | a;242 -> a 17a | a;21 -> a 1a | a;41 -> a 16a | a;122 -> a 1a | "
        "a,b,c;1 12 14 -> a b c 1b | a,b,c;0 1 0 -> a b c 2- | a,b,c;1 14 7 -> a b c 16b",
        [](const string& list_and_lines) {
            std::istringstream stream(list_and_lines);
            string text;
            std::getline(stream, text, ';');
            ScannedInterface table[MAX_SCANNED_INTERFACES];
            const std::size_t count = split_interface_list(text.c_str(), table);
            string names;
            for (std::size_t i = 0; i < count; ++i) {
                string lines;
                stream >> lines;
                int& status = table[i].status;
                for (const int line : lines)
                    status = update_scan_status(status, {(line & 1) != 0, (line & 2) != 0, (line & 4) != 0});
                names += table[i].name + " "s;
            }
            char selected[INTERFACE_NAME_SIZE] = "-";
            const int result = select_interface(table, count, selected);
            return names + std::to_string(result) + selected;
        });
}

template <AddressFamily FAMILY> string name_servers(const string& text)
{
    in6_addr servers[MAX_NAME_SERVERS] = {};
    string texts;
    int left = take_resolver_text(FAMILY, reader_of("nameserver " + text), servers, 0);
    for (auto* slot = reinterpret_cast<char*>(servers); left > 0; --left, slot += address_size(FAMILY))
        texts += address_text(FAMILY, slot) + ";";
    return texts;
}

TEST(ResolverFiles, LinesNameServers)
{
    // IPv4: 50 characters of a line of 255, a failed conversion takes a slot. IPv6: lines of 511, no dot within 50.
    expect_rows("1.0.0.1 # a.b\n#\nNameServer 1.0.0.1\n -> 1.0.0.1;1.0.0.1; | ::1\nnameserver 7 ->  | "
                "\nnameserver\t1.0.0.1\nnameserver  1.0.0.1\n nameserver 1.0.0.1\nnameserver1.0.0.1 ->  | "
                "127.0.0.1\nnameserver 127.0.0.2\n -> 127.0.0.2; | 10.1 -> 10.0.0.1; | 1.0.2.010 -> 1.0.2.8; | "
                "1..0.1\nnameserver 1.0.0.1\nnameserver 0.0.0.0 -> 0.0.0.0;1.0.0.1;0.0.0.0; | "
                "{31*0}1.2.3.45 -> 1.2.3.45; | {32*0}1.2.3.45 -> 1.2.3.4; | {244*x}nameserver 1.0.0.1 -> 1.0.0.1; | "
                "{243*x}nameserver 1.0.0.1 ->  | 1.0.0.1\n{7*nameserver 1.0.0.1\n}nameserver 1.0.0.9 -> {8*1.0.0.1;}",
                name_servers<IPV4>);
    expect_rows("2001:DB8::1\r\n -> 2001:db8::1; | ::ffff:1.0.0.1\nnameserver ::2 # a.b\n ->  | "
                "::2{46* }. ->  | ::2{47* }. -> ::2; | fe80::1%eth0 -> fe80::1; | ::1\nnameserver 0::1 -> ::1; | "
                "1:2\nnameserver ::\nnameserver ::2 -> ::;::2; | {500*x}nameserver ::2 -> ::2; | "
                "{499*x}nameserver ::2 ->  | ::2\n{7*nameserver ::2\n}nameserver ::9 -> {8*::2;}",
                name_servers<IPV6>);
}

// The gateway of eth0 in a table of TEXT;ROUTES, a route DEVICE HOP FLAGS leading to 1.2.3.HOP or ::HOP as the kernel
// prints it (fib_route_seq_show: addresses as numbers of the host's byte order; rt6_info_route).
template <AddressFamily FAMILY> string eth0_gateway(const string& table)
{
    std::istringstream routes(table);
    string text;
    std::getline(routes, text, ';');
    string device;
    for (unsigned hop, flags; routes >> device >> hop >> flags;) {
        char line[180];
        if (FAMILY == IPV4)
            std::snprintf(line, sizeof line, "%s\t00000000\t%08X\t%04X\t0\t0\t0\t00000000\t0\t0\t0%66s\n",
                          device.c_str(), htonl(0x01020300 + hop), flags, "");
        else
            std::snprintf(line, sizeof line, "%032x 00 %032x 00 %032x 00000400 00000001 00000000 %08x %8s\n", 0, 0, hop,
                          flags, device.c_str());
        text += line;
    }
    in6_addr address;
    return find_gateway(FAMILY, reader_of(text), "eth0", &address) == 0 ? address_text(FAMILY, &address) : "none";
}

TEST(DefaultRoutes, FirstGatewayRouteOfTheInterface)
{
    expect_rows("Iface\n;eth0 9 1 wlan0 9 3 eth0 1 3 eth0 9 3 -> 1.2.3.1 | ;eth0 9 7 eth0 9 2 eth 9 3 -> none | "
                ";veth0.2 1 3 eth0 9 3 -> 1.2.3.1 | ;abcdefghijketh0 1 3 eth0 9 3 -> 1.2.3.1 | "
                "{55*x};eth0 1 3 -> 1.2.3.1 | {54*x};eth0 1 3 -> none", // in pieces of 55 characters
                eth0_gateway<IPV4>);
    expect_rows(";eth0 9 1 wlan0 9 3 eth0 1 3 eth0 9 3 -> ::1 | ;eth0 9 65539 eth0 9 7 eth 9 3 -> none | "
                ";veth0-uplink 1 3 eth0 9 3 -> ::1 | ;uplink-0eth0 9 3 eth0 1 3 -> ::1 | "
                ";uplink-0-eth0 9 3 eth0 1 3 -> none | {298*0};eth0 1 3 -> ::1 | {149*0}z;eth0 1 3 -> none",
                eth0_gateway<IPV6>); // in pieces of 149, 8 of them the device name; the rest may end the table
}

// IPv4, IPv6, class, mode; interface; list; display, examination, budget: what these arguments set.
string settings_after(const string& text)
{
    string line = "-v " + text; // the first is the program's path
    std::vector<const char*> arguments;
    for (const char* word = std::strtok(line.data(), " "); word != nullptr; word = std::strtok(nullptr, " "))
        arguments.push_back(word);
    RunOptions run;
    DriverSettings driver;
    if (!parse_command_line(static_cast<int>(arguments.size()), arguments.data(), run, driver))
        return "over";
    std::ostringstream settings;
    settings << run.ipv4_enabled << run.ipv6_enabled << run.device_class << run.check_mode << " "
             << driver.interface_name << " (" << driver.terminal_list << ") " << driver.display_result
             << driver.interface_check_enabled << driver.retry_count;
    return settings.str();
}

TEST(CommandLine, ArgumentsSetTheRecords)
{
    expect_rows(
        " -> 1011 eth0 () 013 | -D -NRT -WOI -6 -DEV0 -> 0101 nonic () 100 | -trm a,b -et -> 1011 eth0 (a,b) 013 | "
        "-TrM a,b -dev5 -> 1052 eth0 (a,b) 013 | -et -trm long -trm c -> 1012 eth0 (c) 013 | "
        "-dev2 -Dev3 -dev4 -> 1041 eth0 () 013 | -6 -46 -> 1111 eth0 () 013 | -46 -6 -> 0111 eth0 () 013 | "
        "-i -d -> 1011 -d () 013 | -trm -v -d -> 1012 eth0 (-v) 113 | -i long -i e -> 1011 e () 013 | "
        "-woi -I eth2 -> 1011 eth2 () 003 | -i eth2 -woi -> 1011 nonic () 003 | -d -i -> 1011 eth0 () 113 | "
        "-d -trm -> 1012 eth0 () 113 | -i {19*n} -trm {69*l} -> 1012 {19*n} ({69*l}) 013 | -i {20*n} -> over | "
        "-trm {70*l} -> over | -dev -> over | -dev6 -> over | -d eth0 -> over | -ieth1 -> over | "
        "-i=eth1 -> over | -x -v -> over | -d -v -x -> over | -4 -> over | d -> over",
        settings_after);
}

TEST(ResultFile, SuccessCountsForLessThanADay)
{
    expect_rows(
        "17\n13601\n -> 17 13601 | 17\n13600\n -> 254 0 | 1\n100000\n -> 1 100000 | 1\n100001\n -> 254 0 | "
        "238\n99999\n -> 17 99999 | 144\n99999\n -> 144 0 | 25\n99999\n -> 25 99999 | 25\n13600\n -> 254 0 | "
        "254\n99999\n -> 254 99999 | 14\n -> 1 0 | 224 -> 16 0 | 1\n0\n -> 254 0 | 1\n\n -> 254 0 | \n99999\n -> 0 0 | "
        " -> 255 0 | garbage\n99999\n -> 0 0 |  +17x\n 99999x -> 17 99999 | 0x11\n99999 -> 0 0 | 1\n{99*9} -> 254 0 | "
        "1\n-9223372036854775808 -> 254 0 | 1\n9223372036854775807 -> 254 0 | 9\n1\n -> 9 0 | "
        "1{254* }99999 -> 1 99999 | 1{253* }99999 -> 254 0", // a line ends at 255 characters
        [](const string& text) {
            std::int64_t stamp = 7;
            const int code = parse_result(reader_of(text), 100000, stamp);
            return std::to_string(code) + " " + std::to_string(stamp);
        });
    expect_rows("14 -> 1 | 224 -> 16 | 238 -> 17 | 233 -> 25 | 30 -> 17 | 254 -> 241 | 239 -> 31 | 9 -> 9 | 0 -> 0",
                [](const string& code) { return std::to_string(without_markers(std::stoi(code))); });
}

} // namespace
