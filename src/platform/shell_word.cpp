#include "shell_word.h"

#include <cstring>

std::size_t quote_shell_word(const char* text, char* word, std::size_t size)
{
    // Between single quotes every character but the quote itself is literal; a quote leaves them, stands escaped, and
    // enters them again.
    static constexpr char ESCAPED_QUOTE[] = "'\\''";
    constexpr std::size_t LONGEST_CHARACTER = sizeof ESCAPED_QUOTE - 1;
    constexpr std::size_t CLOSING = 2; // the closing quote and the terminating zero

    if (size < 1 + CLOSING)
        return 0;
    std::size_t length = 0;
    word[length++] = '\'';
    for (; *text != '\0'; ++text) {
        if (size - length < LONGEST_CHARACTER + CLOSING)
            return 0;
        if (*text == '\'') {
            std::memcpy(word + length, ESCAPED_QUOTE, LONGEST_CHARACTER);
            length += LONGEST_CHARACTER;
        } else {
            word[length++] = *text;
        }
    }
    word[length++] = '\'';
    word[length] = '\0';
    return length;
}
