#include "platform/text_io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace
{

constexpr std::size_t REGULAR_FILE_LIMIT = 1024 * 1024; // far more than any real file of ours has

bool is_regular_file(int descriptor)
{
    struct stat status;
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

// Opens the file that `found`, a descriptor made with O_PATH, refers to, even if the path leads elsewhere by now
// (proc(5), /proc/PID/fd). Only a device without /proc has to trust the path a second time.
int open_found_file(int found, const char* path)
{
    char name[32];
    std::snprintf(name, sizeof name, "/proc/self/fd/%d", found);
    const int file = open(name, O_RDONLY | O_CLOEXEC);
    if (file < 0 && errno == ENOENT)
        return open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    return file;
}

// Anyone can make a link to any device, and to open a device can already have an effect. O_PATH finds what the link
// leads to without opening it. The other flags are for kernels before 2.6.39, which ignore O_PATH.
int open_link_target(const char* path)
{
    const int found = open(path, O_PATH | O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (found < 0)
        return -1;
    const int file = is_regular_file(found) ? open_found_file(found, path) : -1;
    close(found);
    return file;
}

int open_if_regular(const char* path)
{
    int file = open(path, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0 && errno == ELOOP)
        file = open_link_target(path);
    if (file < 0 || is_regular_file(file))
        return file;
    close(file);
    return -1;
}

// Makes at least one unread byte available. Returns false at the end of the text.
bool fill_buffer(TextReader& reader)
{
    if (reader.position < reader.end)
        return true;
    const std::size_t size = reader.left < sizeof reader.buffer ? reader.left : sizeof reader.buffer;
    const ssize_t count = read(reader.descriptor, reader.buffer, size);
    if (count <= 0)
        return false;
    reader.left -= static_cast<std::size_t>(count);
    reader.position = 0;
    reader.end = static_cast<std::size_t>(count);
    return true;
}

} // namespace

void start_reading(TextReader& reader, int descriptor)
{
    reader.descriptor = descriptor;
    reader.left = SIZE_MAX;
    reader.position = 0;
    reader.end = 0;
}

bool open_kernel_file(const char* path, TextReader& reader)
{
    start_reading(reader, open(path, O_RDONLY | O_CLOEXEC));
    return reader.descriptor >= 0;
}

bool open_regular_file(const char* path, TextReader& reader)
{
    start_reading(reader, open_if_regular(path));
    reader.left = REGULAR_FILE_LIMIT;
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
