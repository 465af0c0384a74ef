// The name servers that one family's checks ask, and the walk over them.
#pragma once

#include "dns/dns_query.h"
#include "net_config.h"

struct NameServerList {
    NameServerSlots servers;
    int count;
};

// Builds the list from the resolver files: the family's servers in file order, up to the first unset one. IPv4 uses the
// IPv6 servers if it has none or its first is unset. If there is no IPv6 server either, an unset first IPv4 server
// stays in the list, as 0.0.0.0. An unset first IPv6 server makes the list empty.
NameServerList collect_name_servers(AddressFamily family);

enum class Resolution { FOUND, NO_NAME_SERVER, FAILED };

// Asks the listed servers in order, with one query each, until one gives the host's address of the family.
//   FOUND           the address is in `answer`
//   NO_NAME_SERVER  the list is empty
//   FAILED          no listed server gave an address
// `interface_name` is passed to dns_query, which may replace it.
Resolution resolve_host(const char* host, AddressFamily family, const NameServerList& list, IpAddress& answer,
                        InterfaceName& interface_name);

// Returns 0 if one of the name servers gave an address of the family for the probe host of the device class, otherwise
// -1. `interface_name` is passed to dns_query, which may replace it.
int check_dns(AddressFamily family, int device_class, InterfaceName& interface_name);
