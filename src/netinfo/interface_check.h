// Whether one interface has what it takes to reach other networks.
#pragma once

#include "interface_name.h"
#include "run_options.h"

// Examines the interface only as far as a verdict needs it: the gateway of an enabled family, and the name servers of
// an enabled family, or of IPv6 if IPv4 has none of its own. Returns one of
//   EXAMINATION_IMPOSSIBLE (1)  ifconfig could not be started
//   INTERFACE_MISSING (3)       ifconfig shows no hardware address
//   otherwise                   the code of each enabled family's NO_ADDRESS, NO_GATEWAY, NO_NAME_SERVER or
//                               INTERFACE_READY (7 and 112); 7 if no family is enabled
int check_interface(const InterfaceName& interface_name, const RunOptions& options);
