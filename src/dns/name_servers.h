// The list of name servers that the checks and probes of a family ask, and the walk over it.
#pragma once

#include "dns/dns_query.h"
#include "net_config.h"

// Address texts; the list ends at its first empty field.
struct NameServerList {
    char server[MAX_NAME_SERVERS][ADDRESS_TEXT_SIZE];
};

// Builds the list from the resolver files: the servers of the family, unset ones as empty fields; IPv4 falls back to
// the IPv6 servers when there is no IPv4 one or the first is unset. IPv6 servers of which the first is unset give an
// empty list. A first IPv4 server that is unset stays in field 0 when there is no IPv6 server.
NameServerList collect_name_servers(AddressFamily family);

enum class Resolution { FOUND, NO_NAME_SERVER, FAILED };

// Asks the listed servers in order until one gives the host's address of the family, with one query each. FOUND: its
// text is in `answer`. NO_NAME_SERVER: the list is empty. FAILED: no listed server gave an address.
// `ifname` is handed to dns_query, which may rewrite it.
Resolution resolve_host(const char* host, AddressFamily family, const NameServerList& list,
                        char (&answer)[ADDRESS_TEXT_SIZE], char (&ifname)[INTERFACE_NAME_SIZE]);
