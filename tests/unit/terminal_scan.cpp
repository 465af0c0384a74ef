#include "netinfo/terminal_scan.h"

#include "cases.h"

namespace
{

string names_in(const string& list)
{
    ScannedInterface table[MAX_SCANNED_INTERFACES];
    const std::size_t count = split_interface_list(list.c_str(), table);
    string names;
    for (std::size_t i = 0; i < count; ++i)
        names += table[i].name + " "s;
    return names;
}

const Case LISTS[] = {
    {"two", "eth0,wlan0", "eth0 wlan0 "},
    {"no_empty_names", ",,a, ,_,b,", "a b "},
    {"five", "a,b,c,d,e,f", "a b c d e "},
    {"no_more_characters_than_these", "aZ09.-/,eth_1,et\xC3\xA4h:2", "aZ09.-/ eth1 eth2 "},
    {"of_14_characters", times(14, "a"), times(14, "a") + " "},
    {"of_14_characters_and_a_dropped_one", times(9, "b") + "_" + times(5, "b"), times(14, "b") + " "},
    {"not_of_15_characters", times(15, "a") + ",a,b,c,d,e", "a b c d e "},
};

CASES(InterfaceList, names_in, LISTS);

using Lines = vector<IfconfigItems>;

constexpr IfconfigItems HARDWARE = {true, false, false};
constexpr IfconfigItems ADDRESS = {false, true, false};
constexpr IfconfigItems IPV6_ADDRESS = {false, false, true};

string status_after(const Lines& lines)
{
    int status = 0;
    for (const IfconfigItems& items : lines)
        status = update_scan_status(status, items);
    return std::to_string(status);
}

const CaseOf<Lines> STATUS_LINES[] = {
    {"present", {HARDWARE}, "2"},
    {"present_with_ipv4", {HARDWARE, {true, true, false}}, "3"},
    {"both_families", {HARDWARE, ADDRESS, IPV6_ADDRESS}, "19"},
    {"stays_absent", {{false, false, false}}, "0"},
    {"address_before_presence", {IPV6_ADDRESS, HARDWARE}, "16"},
};

CASES(ScanStatus, status_after, STATUS_LINES);

// The result and the selected name of interfaces a, b and c of these status.
string selection(const vector<int>& statuses)
{
    vector<ScannedInterface> table;
    for (const int status : statuses)
        table.push_back({{static_cast<char>('a' + table.size())}, status, -1});
    InterfaceName selected = {"untouched"};
    const int result = select_interface(table.data(), table.size(), selected);
    return std::to_string(result) + " " + selected.text;
}

const CaseOf<vector<int>> TABLES[] = {
    {"none", {}, "3 untouched"},
    {"all_absent", {0, 0}, "3 untouched"},
    {"one_present", {0, 2, 0}, "2 untouched"},
    {"first_with_an_address", {2, 16, 17}, "16 b"},
    {"one_with_both_families", {17}, "17 a"},
    {"one_present_with_an_address", {3}, "1 a"},
};

CASES(SelectInterface, selection, TABLES);

} // namespace
