// How any text becomes one word of a shell command.
#pragma once

#include <cstddef>

// Writes `text` as one quoted word that every POSIX shell takes literally, whatever bytes it holds (POSIX.1-2017, Shell
// Command Language, 2.2.2). `word` holds `size` bytes; 4 bytes for each one of text and 3 more always suffice.
// Returns the word's length without its terminating zero, or 0 when it does not fit.
std::size_t quote_shell_word(const char* text, char* word, std::size_t size);
