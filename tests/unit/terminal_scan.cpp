#include "netinfo/terminal_scan.h"

#include <cstring>

#include "cases.h"

static string names_in(const string& list)
{
    ScannedInterface table[MAX_SCANNED_INTERFACES];
    const std::size_t count = split_interface_list(list.c_str(), table);
    string names;
    for (std::size_t i = 0; i < count; ++i)
        names += table[i].name + " "s;
    return names;
}

const Case LISTS[] = {
    {"empty_names", ",,a, ,_,b,", "a b "},
    {"sixth_name", "a,b,c,d,e,f", "a b c d e "},
    {"other_characters", "azAZ09.-/,[`{@:_1,et\xC3\xA4h:2", "azAZ09.-/ 1 eth2 "},
    {"names_of_14_and_15_characters", times(9, "a") + "_" + times(5, "a") + "," + times(15, "b"), times(14, "a") + " "},
};

CASES(InterfaceList, names_in, LISTS);

// The result and the selected name of a, b and c. Of each, the lines that ifconfig prints are given as letters: one
// with a hardware address (h), an IPv4 address (4) or a global IPv6 address (6).
static string selection(const vector<string>& interfaces)
{
    ScannedInterface table[MAX_SCANNED_INTERFACES];
    std::memset(table, 0xFF, sizeof table);
    split_interface_list("a,b,c", table);
    for (std::size_t i = 0; i < interfaces.size(); ++i) {
        for (const char line : interfaces[i])
            table[i].status = update_scan_status(table[i].status, {line == 'h', line == '4', line == '6'});
    }
    InterfaceName selected = {"-"};
    const int result = select_interface(table, 3, selected);
    return std::to_string(result) + selected.text;
}

const CaseOf<vector<string>> SCANS[] = {
    {"one_present", {"", "h", ""}, "2-"},
    {"address_before_presence", {"6h4"}, "17a"},
    {"first_with_an_address", {"h", "h4", "6"}, "1b"},
};

CASES(SelectInterface, selection, SCANS);
