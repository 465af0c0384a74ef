// What the options ask of the check driver, which passes on what a check needs.
#pragma once

#include <cstddef>

#include "interface_name.h"

inline constexpr std::size_t TERMINAL_LIST_SIZE = 70; // a list of at most 69 characters

struct DriverSettings {
    // One name for the whole run: the terminal scan and a query to a link-local name server may replace it.
    InterfaceName interface_name = {"eth0"};
    char terminal_list[TERMINAL_LIST_SIZE] = "";
    bool display_result = false;
    bool interface_check_enabled = true;
    int retry_count = 3; // the attempts of a server probe; 0 means one attempt, as 1 does
};
