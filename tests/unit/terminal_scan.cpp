#include "netinfo/terminal_scan.h"

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
