// What the operating system knows about one interface, and whether that is enough to reach other networks.
#pragma once

#include "interface_name.h"
#include "net_config.h"
#include "run_options.h"

// Stores the interface's gateway and the configured name servers of the family in `config`. Fields for which nothing is
// found keep their values.
void read_gateway_and_name_servers(AddressFamily family, const InterfaceName& interface_name, NetConfig& config);

// Examines the interface and fills `config`. Returns one of
//   EXAMINATION_IMPOSSIBLE (1)  ifconfig could not be started; `config` is untouched
//   INTERFACE_MISSING (3)       ifconfig shows no hardware address; `config` is untouched
//   otherwise                   the code of each enabled family's NO_ADDRESS, NO_GATEWAY, NO_NAME_SERVER or
//                               INTERFACE_READY (7 and 112); 7 if no family is enabled
int check_interface(const InterfaceName& interface_name, const RunOptions& options, NetConfig& config);
