#include "platform/shell_word.h"

#include <cstring>

std::size_t quote_shell_word(const char* text, char* word, std::size_t size)
{
    // Between single quotes every character but the quote itself is literal; a quote leaves them, stands escaped, and
    // enters them again.
    static constexpr char ESCAPED_QUOTE[] = "'\\''";
    constexpr std::size_t CLOSING = 2; // the closing quote and the terminating zero

    if (size < 1 + CLOSING)
        return 0;
    std::size_t length = 0;
    word[length++] = '\'';
    for (; *text != '\0'; ++text) {
        const bool is_quote = *text == '\'';
        const char* piece = is_quote ? ESCAPED_QUOTE : text;
        const std::size_t piece_length = is_quote ? sizeof ESCAPED_QUOTE - 1 : 1;
        if (size - length < piece_length + CLOSING)
            return 0;
        std::memcpy(word + length, piece, piece_length);
        length += piece_length;
    }
    word[length++] = '\'';
    word[length] = '\0';
    return length;
}
