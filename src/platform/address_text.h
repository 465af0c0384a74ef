// How the text of an address becomes an address.
#pragma once

#include "ip_address.h"

inline constexpr char IPV4_TEXT_CHARACTERS[] = "0123456789.";
inline constexpr char IPV6_TEXT_CHARACTERS[] = "0123456789abcdefABCDEF:";

// Converts the text as inet_aton (IPv4, the shorter dotted forms too) or inet_pton (IPv6) does. Returns false, with
// `address` untouched, if the text is no address of the family.
bool convert_address(AddressFamily family, const char* text, IpAddress& address);
