// The name servers that the resolver files name.
#pragma once

#include "net_config.h"
#include "platform/text_io.h"

// Takes the name servers of one family from a text into the slots from `count` on. Returns the new count, at most
// MAX_NAME_SERVERS. A line that names one begins with "nameserver " (in either case, resolv.conf(5)) and the address. A
// line of more than 255 characters (IPv4) or 511 characters (IPv6) counts as several.
//
// IPv4: the address is the run of digits and dots there, up to the 50th character of the line. It counts if it holds a
// dot and is not 127.0.0.1. If it does not convert, its slot stays unset.
//
// IPv6: the address is the run of hexadecimal digits and colons there, at most 50 characters. It counts if it converts,
// is not "::1", and the 50 characters after the keyword hold no dot.
int take_resolver_text(AddressFamily family, TextReader& reader, NameServerSlots& servers, int count);

// Clears the slots and fills them with the configured name servers of the family, in file order. Returns how many slots
// were taken. A file that is not a readable regular file is skipped.
int read_nameservers(AddressFamily family, NameServerSlots& servers);
