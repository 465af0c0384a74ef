// Through which interface, and from which of its addresses, an IPv6 link-local name server is asked.
#pragma once

#include <ifaddrs.h>
#include <netinet/in.h>

#include "interface_name.h"
#include "ip_address.h"

// Considers the first 10 usable addresses of the list: IPv6, on an interface that is up, and none of
//   - link-local, site-local
//   - IPv4-mapped, IPv4-compatible
//   - loopback, unspecified
// Returns the interface of the last one that is not a bridge ("br..."), or of the first one if all later ones are
// bridges. Returns null if there is no usable address.
const char* choose_ipv6_interface(const ifaddrs* list);

// Returns the first IPv6 link-local address of the interface of exactly this name if the interface is up, otherwise
// null.
const in6_addr* link_local_address(const ifaddrs* list, const char* interface_name);

// Replaces `interface_name` by the system's interface that choose_ipv6_interface returns. Returns 0, or -1 with
// `interface_name` unchanged.
int pick_ipv6_interface(InterfaceName& interface_name);

// Finds the link-local address of the interface as link_local_address does. Returns 0, or -1 with `address` unchanged.
int find_link_local_addr(const char* interface_name, IpAddress& address);
