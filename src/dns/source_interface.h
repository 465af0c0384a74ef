// Through which interface, and from which address of it, an IPv6 link-local name server is asked.
#pragma once

#include <ifaddrs.h>
#include <netinet/in.h>

#include "driver_settings.h"

// Chooses among the first 10 addresses of the list that are IPv6, on an interface that is up, and neither link-local,
// site-local, IPv4-mapped, IPv4-compatible, loopback nor unspecified: the interface of the last one whose name does not
// begin with "br", or of the first one when every later name does. Returns null when there is no such address.
const char* choose_ipv6_interface(const ifaddrs* list);

// The first IPv6 link-local address of the interface of exactly this name, when it is up; null when there is none.
const in6_addr* link_local_address(const ifaddrs* list, const char* name);

// Replaces `ifname` by the interface that choose_ipv6_interface finds among the system's addresses. Returns 0, or -1
// with `ifname` unchanged.
int pick_ipv6_interface(char (&ifname)[INTERFACE_NAME_SIZE]);

// Writes the text of the interface's link-local address (inet_ntop). Returns 0, or -1 with `text` unchanged.
int find_link_local_addr(const char* ifname, char (&text)[INET6_ADDRSTRLEN]);
