// The gateway of an interface, from the kernel's route tables.
#pragma once

#include "interface_name.h"
#include "ip_address.h"
#include "platform/text_io.h"

// Scans "/proc/net/route" (fib_route_seq_show in the kernel: a header, then name, destination, gateway, flags and more,
// the addresses as numbers in the host's byte order) or "/proc/net/ipv6_route" (rt6_info_route: destination, source and
// next hop as bytes, flags, device name) in pieces of 55 characters for IPv4 and 149 for IPv6. A route matches if its
// flags are exactly up and gateway, and its device name contains the interface name (eth0 also matches eth0.1). The
// first match has the gateway. A piece of the IPv6 table that does not begin with a hexadecimal digit ends the search,
// unless it is blank. Returns false, with `gateway` untouched, if no such route is found.
bool find_gateway(AddressFamily family, TextReader& table, const InterfaceName& interface_name, IpAddress& gateway);

// Reads the kernel's table of the family as find_gateway does. Returns 0 if a gateway was found. Returns 1 if not; then
// `gateway` is unset.
int read_gateway(AddressFamily family, const InterfaceName& interface_name, IpAddress& gateway);
