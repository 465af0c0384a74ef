// The gateway of an interface, from the kernel's route tables.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>

#include "address_family.h"
#include "platform/text_file.h"

enum class RouteMatch { NONE, GATEWAY, END_OF_TABLE };

// Scans one piece of "/proc/net/route" (kernel, fib_route_seq_show: a header, then name, destination, gateway, flags,
// ..., the addresses as numbers in the host's byte order) or "/proc/net/ipv6_route" (ipv6_route_seq_show: destination,
// source and next hop as bytes, flags, device name). GATEWAY: a route whose flags are exactly up and gateway and whose
// device name contains `name` (so eth0 also matches eth0.1); its gateway was stored in network byte order.
// END_OF_TABLE: not even the first field could be read. NONE: anything else, a blank piece among it.
RouteMatch match_route_piece(AddressFamily family, const char* piece, const char* name, void* gateway);

// Scans a table piece by piece (55 characters for IPv4, 149 for IPv6) up to the first match. Returns 0 with the gateway
// stored, or 1 with the gateway untouched.
int find_gateway(AddressFamily family, TextReader& reader, const char* name, void* gateway);

// Returns 0 when the interface has a gateway: its address (network byte order) and its text are stored. Returns 1 when
// none is found: the address is all zero and the text "0.0.0.0" or "::". `text` holds INET_ADDRSTRLEN (16) or
// INET6_ADDRSTRLEN (46) bytes by family.
int read_gateway(AddressFamily family, const char* name, char* text, void* gateway);

inline int read_ipv4_gateway(const char* name, char (&text)[INET_ADDRSTRLEN], in_addr& gateway)
{
    return read_gateway(AddressFamily::IPV4, name, text, &gateway);
}

inline int read_ipv6_gateway(const char* name, char (&text)[INET6_ADDRSTRLEN], in6_addr& gateway)
{
    return read_gateway(AddressFamily::IPV6, name, text, &gateway);
}
