// One exchange with one name server.
#pragma once

#include "address_family.h"
#include "driver_settings.h"

inline constexpr std::size_t ADDRESS_TEXT_SIZE = 50; // the text of an address of either family

// Asks the name server `server` (address text; one with a ':' is IPv6) for the host's address of the family, with one
// UDP datagram. Each datagram that arrives is examined, whoever sent it; the query fails when 3 seconds pass without a
// further one. Returns 0 with the address text in `result`, or -1 with `result` untouched.
// `ifname` matters for an IPv6 link-local server only: the query then leaves through that interface from port 53; when
// it is "nonic" it is replaced by an interface that has a global IPv6 address, if there is one, for this call and all
// later ones.
int dns_query(const char* host, const char* server, char (&result)[ADDRESS_TEXT_SIZE], AddressFamily family,
              char (&ifname)[INTERFACE_NAME_SIZE]);
