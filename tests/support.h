// What the unit tests and the fuzzers share.
#pragma once

#include <string>

#include "address_family.h"
#include "platform/text_io.h"

inline constexpr AddressFamily IPV4 = AddressFamily::IPV4;
inline constexpr AddressFamily IPV6 = AddressFamily::IPV6;

// The one reader, which now holds this text and nothing after it. What exceeds its buffer is cut off.
inline TextReader& reader_of(const std::string& text)
{
    static TextReader reader;
    start_reading(reader, -1);
    reader.end = text.copy(reader.buffer, sizeof reader.buffer);
    return reader;
}
