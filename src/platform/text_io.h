// How text is read in pieces from a file or a pipe, and written to a descriptor.
#pragma once

#include <cstddef>

// A descriptor that is read through a buffer of its own. With descriptor -1 it yields only what is already in the
// buffer.
struct TextReader {
    int descriptor;
    std::size_t left;     // how many bytes may still be read from the descriptor
    std::size_t position; // of the next unread byte in the buffer
    std::size_t end;      // of the bytes in the buffer
    char buffer[4096];
};

// Makes a reader of an open descriptor, which stays the caller's.
void start_reading(TextReader& reader, int descriptor);

// Opens a file that only the kernel can provide, to be read whole. Returns false if it cannot be opened; then there
// is nothing to close.
bool open_kernel_file(const char* path, TextReader& reader);

// Opens a file in whose place other users may have put anything. Only a regular file (also through links) is read, and
// only its first 1 MiB. Nothing blocks. A link to a device does not open the device. A link to a file of procfs or
// sysfs counts only if it is root's and names that file itself; one to another file without a size only if it is
// root's. Returns false for anything else; then there is nothing to close.
bool open_regular_file(const char* path, TextReader& reader);

void close_text_file(TextReader& reader);

// Reads the next piece, which ends after a line feed, at size - 1 characters, or at the end of the text (as with
// fgets), and terminates it with a zero. Returns false, with nothing written, if the text has ended or cannot be read.
bool read_piece(TextReader& reader, char* piece, std::size_t size);

template <std::size_t SIZE> bool read_piece(TextReader& reader, char (&piece)[SIZE])
{
    return read_piece(reader, piece, SIZE);
}

// Writes the whole text. Returns false if that failed; part of the text may then be written.
bool write_text(int descriptor, const char* text);
