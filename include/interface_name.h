// The name of the network interface that is checked.
#pragma once

#include <cstddef>

inline constexpr std::size_t INTERFACE_NAME_SIZE = 20; // a name of at most 19 characters

struct InterfaceName {
    char text[INTERFACE_NAME_SIZE];
};

// The name that means no particular interface.
inline constexpr char NO_INTERFACE_NAMED[] = "nonic";
