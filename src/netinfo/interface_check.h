// What the operating system knows about one interface, and whether that suffices to reach other networks.
#pragma once

#include "net_config.h"
#include "run_options.h"

// Stores the interface's gateway and the configured DNS servers of the family in `config`; fields for which nothing is
// found keep their value.
void read_gateway_and_nameservers(AddressFamily family, const char* name, NetConfig& config);

// Examines the interface and fills `config`. Returns EXAMINATION_IMPOSSIBLE (1) when ifconfig could not be started and
// INTERFACE_MISSING (3) when it shows no hardware address, `config` untouched both times; otherwise the code made of
// each enabled family's NO_ADDRESS, NO_GATEWAY, NO_DNS_SERVER or INTERFACE_READY (7 and 112), and 7 when no family is
// enabled.
int check_interface(const char* name, const RunOptions& options, NetConfig& config);
