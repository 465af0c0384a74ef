// What only the check driver reads, and hands on to the checks.
#pragma once

#include <cstddef>

inline constexpr std::size_t INTERFACE_NAME_SIZE = 20; // a name of at most 19 characters
inline constexpr std::size_t TERMINAL_LIST_SIZE = 70;  // a list of at most 69 characters

// The interface name that stands for none in particular.
inline constexpr char NO_INTERFACE_NAMED[] = "nonic";

struct DriverSettings {
    // One buffer for the whole run: the terminal scan and a link-local name query may write another name into it.
    char interface_name[INTERFACE_NAME_SIZE] = "eth0";
    char terminal_list[TERMINAL_LIST_SIZE] = "";
    bool display_result = false;
    bool interface_check_enabled = true;
    int retry_count = 3; // the attempt budget of a server probe; 0 means one attempt, as 1 does
};
