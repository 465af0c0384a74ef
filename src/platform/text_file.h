// How text is read from a file in pieces and written to a descriptor, without blocking on what is no file.
#pragma once

#include <cstddef>

// A descriptor read through a buffer of its own; with descriptor -1 it holds only what the buffer holds.
struct TextReader {
    int descriptor;
    std::size_t position; // of the next unread byte in the buffer
    std::size_t end;      // of the bytes in the buffer
    char buffer[4096];
};

// Makes a reader of an open descriptor, which stays the caller's.
void start_reading(TextReader& reader, int descriptor);

// Opens a file for reading. A FIFO, a terminal or another device does not block, here or when it is read: what has no
// byte at hand is at its end. Returns false when it cannot be opened; then there is nothing to close.
bool open_text_file(const char* path, TextReader& reader);

void close_text_file(TextReader& reader);

// Reads the next piece, which ends behind a line feed, at size - 1 characters, or at the end of the text (as fgets
// does), and terminates it with a zero. Returns false, with nothing written, when the text has ended or cannot be read.
bool read_piece(TextReader& reader, char* piece, std::size_t size);

template <std::size_t SIZE> bool read_piece(TextReader& reader, char (&piece)[SIZE])
{
    return read_piece(reader, piece, SIZE);
}

// Writes the whole text; false when that failed, with part of it possibly written.
bool write_text(int descriptor, const char* text);
