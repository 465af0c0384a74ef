// What the operating system knows about one interface, and whether that is enough to reach other networks.
#pragma once

#include "interface_name.h"
#include "net_config.h"
#include "run_options.h"

// Stores the gateway of the interface in `config`. If none is found, the field keeps its value.
void read_gateway_of(AddressFamily family, const InterfaceName& interface_name, NetConfig& config);

// Stores the configured name servers of the family in `config`. If there are none, the fields keep their values.
void read_name_servers_of(AddressFamily family, NetConfig& config);

// Examines the interface and fills `config`, without what no verdict needs: the gateway of a family that is not
// enabled, and its name servers unless IPv4 has none of its own. Returns one of
//   EXAMINATION_IMPOSSIBLE (1)  ifconfig could not be started; `config` is untouched
//   INTERFACE_MISSING (3)       ifconfig shows no hardware address; `config` is untouched
//   otherwise                   the code of each enabled family's NO_ADDRESS, NO_GATEWAY, NO_NAME_SERVER or
//                               INTERFACE_READY (7 and 112); 7 if no family is enabled
int check_interface(const InterfaceName& interface_name, const RunOptions& options, NetConfig& config);
