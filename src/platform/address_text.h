// How the text of an address is cut out of a line and converted.
#pragma once

#include <cstddef>
#include <cstring>

#include "address_family.h"

inline constexpr char IPV4_TEXT_CHARACTERS[] = "0123456789.";
inline constexpr char IPV6_TEXT_CHARACTERS[] = "0123456789abcdefABCDEF:";

// Copies the leading characters of `line` that are all in `allowed`, at most SIZE - 1, and terminates them.
template <std::size_t SIZE> void copy_leading(const char* line, const char* allowed, char (&text)[SIZE])
{
    std::size_t length = std::strspn(line, allowed);
    if (length > SIZE - 1)
        length = SIZE - 1;
    std::memcpy(text, line, length);
    text[length] = '\0';
}

// Converts the text as inet_aton (IPv4, the shorter dotted forms too) or inet_pton (IPv6) does, into network byte
// order. Returns false, with `address` untouched, when it is no address.
bool convert_address(AddressFamily family, const char* text, void* address);
