// What the command line asks of a run.
#pragma once

#include "address_family.h"

inline constexpr int MODE_EVERY_TIME = 1;
inline constexpr int MODE_TERMINAL = 2;

struct RunOptions {
    bool ipv6_enabled = false;
    bool ipv4_enabled = true;
    int device_class = 1; // 0 to 5
    int check_mode = MODE_EVERY_TIME;
};

inline bool is_enabled(AddressFamily family, const RunOptions& options)
{
    return family == AddressFamily::IPV4 ? options.ipv4_enabled : options.ipv6_enabled;
}
