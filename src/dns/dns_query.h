// One exchange with one name server.
#pragma once

#include "interface_name.h"
#include "ip_address.h"

// Asks the name server for the host's address of the family, with one UDP datagram. Each datagram that arrives is
// examined, whoever sent it. The query fails if 3 seconds pass without a further datagram. Returns 0 with the address
// in `result`, or -1 with `result` untouched. `interface_name` matters only for an IPv6 link-local name server: the
// query then leaves through that interface from port 53. If it is "nonic", it is replaced by an interface that has a
// global IPv6 address, if there is one, for this query and all later ones.
int dns_query(const char* host, const IpAddress& server, IpAddress& result, AddressFamily family,
              InterfaceName& interface_name);
