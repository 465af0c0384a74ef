// The DNS servers that the resolver files name.
#pragma once

#include <netinet/in.h>

#include <cstddef>

#include "address_family.h"
#include "net_config.h"
#include "platform/text_file.h"

// Both files are read, in this order, into one list.
inline constexpr const char* RESOLVER_FILES[] = {"/tmp/resolv.conf.auto", "/etc/resolv.conf"};

// Takes the server that one line names ("nameserver ADDRESS", resolv.conf(5)) into the slot at `count`. `servers` is an
// array of MAX_NAME_SERVERS addresses of the family. Returns the new count. An IPv4 entry counts even when its text
// does not convert (its slot keeps its value); an IPv6 entry counts only when it converts.
int take_resolver_line(AddressFamily family, const char* line, void* servers, int count);

// Applies take_resolver_line to each line of a text, a longer line than the family's limit (255 characters for IPv4,
// 511 for IPv6) counting as several. Returns the new count.
int take_resolver_text(AddressFamily family, TextReader& reader, void* servers, int count);

// Clears all MAX_NAME_SERVERS slots and fills them from slot 0 on with the configured servers of the family, in the
// order found, in network byte order. Returns how many slots were taken. A file that cannot be read is passed over.
int read_nameservers(AddressFamily family, void* servers);

inline int read_ipv4_nameservers(in_addr (&servers)[MAX_NAME_SERVERS])
{
    return read_nameservers(AddressFamily::IPV4, servers);
}

inline int read_ipv6_nameservers(in6_addr (&servers)[MAX_NAME_SERVERS])
{
    return read_nameservers(AddressFamily::IPV6, servers);
}
