#include "platform/text_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstring>

namespace
{

// Makes at least one unread byte available; false at the end of the text.
bool fill_buffer(TextReader& reader)
{
    if (reader.position < reader.end)
        return true;
    const ssize_t count = read(reader.descriptor, reader.buffer, sizeof reader.buffer);
    if (count <= 0)
        return false;
    reader.position = 0;
    reader.end = static_cast<std::size_t>(count);
    return true;
}

} // namespace

void start_reading(TextReader& reader, int descriptor)
{
    reader.descriptor = descriptor;
    reader.position = 0;
    reader.end = 0;
}

bool open_text_file(const char* path, TextReader& reader)
{
    start_reading(reader, open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    return reader.descriptor >= 0;
}

void close_text_file(TextReader& reader)
{
    close(reader.descriptor);
}

bool read_piece(TextReader& reader, char* piece, std::size_t size)
{
    std::size_t length = 0;
    while (length < size - 1 && fill_buffer(reader)) {
        const char* unread = reader.buffer + reader.position;
        std::size_t count = reader.end - reader.position;
        if (count > size - 1 - length)
            count = size - 1 - length;
        const void* line_feed = std::memchr(unread, '\n', count);
        if (line_feed != nullptr)
            count = static_cast<std::size_t>(static_cast<const char*>(line_feed) - unread) + 1;
        std::memcpy(piece + length, unread, count);
        length += count;
        reader.position += count;
        if (line_feed != nullptr)
            break;
    }
    if (length == 0)
        return false;
    piece[length] = '\0';
    return true;
}

bool write_text(int descriptor, const char* text)
{
    std::size_t length = std::strlen(text);
    while (length > 0) {
        const ssize_t count = write(descriptor, text, length);
        if (count <= 0)
            return false;
        text += count;
        length -= static_cast<std::size_t>(count);
    }
    return true;
}
