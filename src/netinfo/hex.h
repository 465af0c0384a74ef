// Hexadecimal digits as the kernel's tables and ifconfig print them.
#pragma once

#include <cstddef>
#include <cstdint>

// The first character of `text` that is no white space.
const char* skip_white_space(const char* text);

// The number that the leading hexadecimal digits of `text` write, modulo 256; 0 when there is none.
std::uint8_t hex_to_byte(const char* text);

// Passes over white space and reads up to `digits` hexadecimal digits (at most 8), leaving `text` behind the last one
// read. Returns false, with value untouched, when no digit stands there.
bool take_hex(const char*& text, std::size_t digits, std::uint32_t& value);
