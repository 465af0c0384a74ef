// How text is copied into a field of fixed size, and what separates its words.
#pragma once

#include <cstddef>
#include <cstring>

inline constexpr char WHITE_SPACE[] = " \t\n\v\f\r";

// Returns the position of the first character of the text that is no white space.
inline const char* skip_white_space(const char* text)
{
    return text + std::strspn(text, WHITE_SPACE);
}

// Copies the first `length` characters of the text, at most size - 1 of them, and terminates them.
inline void copy_text(const char* text, std::size_t length, char* field, std::size_t size)
{
    if (length > size - 1)
        length = size - 1;
    std::memcpy(field, text, length);
    field[length] = '\0';
}

template <std::size_t SIZE> void copy_text(const char* text, std::size_t length, char (&field)[SIZE])
{
    copy_text(text, length, field, SIZE);
}

// Copies the leading characters of the text that are all in `allowed`.
template <std::size_t SIZE> void copy_leading(const char* text, const char* allowed, char (&field)[SIZE])
{
    copy_text(text, std::strspn(text, allowed), field, SIZE);
}
