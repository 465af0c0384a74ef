// Which interface of a list a terminal device is to use.
#pragma once

#include <cstddef>

#include "interface_name.h"
#include "netinfo/ifconfig.h"

inline constexpr std::size_t MAX_SCANNED_INTERFACES = 5;
inline constexpr std::size_t SCANNED_NAME_SIZE = 15; // names of at most 14 characters

struct ScannedInterface {
    char name[SCANNED_NAME_SIZE];
    int status;     // 0 absent, 2 present; 1 is added for an IPv4 address, 16 for a global IPv6 address
    int link_state; // the result of get_link_state, -1 at first; nothing depends on it
};

// Splits a comma-separated list into the names of `table`, with status 0. Characters other than ASCII letters, digits,
// ".", "-" and "/" are dropped. Empty names, names of more than 14 characters and names after the fifth are skipped.
// Returns how many names there are.
std::size_t split_interface_list(const char* list, ScannedInterface (&table)[MAX_SCANNED_INTERFACES]);

// Returns the status of an entry after a line with these items.
int update_scan_status(int status, const IfconfigItems& items);

// Selects the first of `count` entries whose status shows an address, and copies its name into `selected`. Returns 1,
// 16 or 17: the code of WORKS for each family that it has an address of. If no entry has one, `selected` is untouched,
// and the result is NO_INTERFACE_HAS_ADDRESS (2) if one is present (status 2), otherwise INTERFACE_MISSING (3).
int select_interface(const ScannedInterface* table, std::size_t count, InterfaceName& selected);

// Runs ifconfig for each interface of the list and selects one as select_interface does.
int scan_terminal_interfaces(const char* list, InterfaceName& selected);
