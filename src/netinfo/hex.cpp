#include "netinfo/hex.h"

#include "platform/text_field.h"

namespace
{

// 0 to 15, or -1 for any other character.
int digit_value(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F')
        return digit - 'A' + 10;
    return -1;
}

} // namespace

std::uint8_t hex_to_byte(const char* text)
{
    unsigned value = 0;
    for (int digit; (digit = digit_value(*text)) >= 0; ++text)
        value = value << 4 | static_cast<unsigned>(digit);
    return static_cast<std::uint8_t>(value);
}

bool take_hex(const char*& text, std::size_t digits, std::uint32_t& value)
{
    text = skip_white_space(text);
    if (digit_value(*text) < 0)
        return false;
    std::uint32_t number = 0;
    for (int digit; digits > 0 && (digit = digit_value(*text)) >= 0; --digits, ++text)
        number = number << 4 | static_cast<std::uint32_t>(digit);
    value = number;
    return true;
}
