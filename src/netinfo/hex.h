// Hexadecimal digits as the kernel's tables and ifconfig print them.
#pragma once

#include <cstddef>
#include <cstdint>

// The value of the leading hexadecimal digits of `text`, modulo 256; 0 if there is none.
std::uint8_t hex_to_byte(const char* text);

// Skips white space, reads up to `digits` hexadecimal digits (at most 8) and leaves `text` after the last one read.
// Returns false, with `value` untouched, if the next character is no such digit.
bool take_hex(const char*& text, std::size_t digits, std::uint32_t& value);
