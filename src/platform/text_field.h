// How text is copied into a field of fixed size.
#pragma once

#include <cstddef>
#include <cstring>

// Copies the first `length` characters of the text, at most SIZE - 1 of them, and terminates them.
template <std::size_t SIZE> void copy_text(const char* text, std::size_t length, char (&field)[SIZE])
{
    if (length > SIZE - 1)
        length = SIZE - 1;
    std::memcpy(field, text, length);
    field[length] = '\0';
}

// Copies the leading characters of the text that are all in `allowed`.
template <std::size_t SIZE> void copy_leading(const char* text, const char* allowed, char (&field)[SIZE])
{
    copy_text(text, std::strspn(text, allowed), field);
}
