#include "platform/text_io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace
{

constexpr std::size_t REGULAR_FILE_LIMIT = 1 << 20; // far more than any real file of ours has
constexpr std::size_t DESCRIPTOR_NAME_SIZE = 32;    // "/proc/self/fd/" and a number
constexpr std::size_t KERNEL_FILE_NAME_SIZE = 64;   // a longer name is no resolver file's

// The f_type of statfs(2).
constexpr unsigned long PROCFS = 0x9FA0;
constexpr unsigned long SYSFS = 0x62656572;

// Whether the link itself names this file in /proc or /sys, and no further link. It is in /etc or /tmp, so that a
// relative name begins with "../", and a slash makes either kind of name an absolute one.
bool names_kernel_file(const char* link, const struct stat& target)
{
    char name[KERNEL_FILE_NAME_SIZE] = "/";
    if (readlink(link, name + 1, sizeof name - 2) < 0)
        return false;
    const char* first_word = name + std::strspn(name, "./");
    struct stat named;
    return (std::strncmp(first_word, "proc/", 5) == 0 || std::strncmp(first_word, "sys/", 4) == 0) &&
           lstat(name, &named) == 0 && named.st_dev == target.st_dev && named.st_ino == target.st_ino;
}

// The files of procfs and sysfs also call themselves regular. For root, to read one may block, give away a secret, or
// take the kernel's messages from those who wait for them (/proc/kmsg), so only root's own link may lead to one:
// /proc/net/pnp, for example, is a resolver file. Other file systems of the kernel have files without a size.
bool may_be_read_through(const char* link, const char* path, const struct stat& target)
{
    struct statfs system;
    struct stat owner;
    if (!S_ISREG(target.st_mode) || statfs(path, &system) != 0 || lstat(link, &owner) != 0)
        return false;
    const auto type = static_cast<unsigned long>(system.f_type);
    if (type == PROCFS || type == SYSFS)
        return owner.st_uid == 0 && names_kernel_file(link, target);
    return target.st_size > 0 || owner.st_uid == 0;
}

// Opens the target of a link unless it is a device or the like: merely opening one can have an effect, and anyone can
// make a link to it. O_PATH finds the target without opening it; its name in /proc (proc(5)) then opens just that file,
// even if the path leads elsewhere by now. Only a device without /proc has to trust the path. The other flags of the
// first call are for kernels before 2.6.39, which ignore O_PATH.
int open_link_target(const char* link)
{
    constexpr int READING = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const int found = open(link, O_PATH | READING);
    if (found < 0)
        return -1;
    char name[DESCRIPTOR_NAME_SIZE];
    std::snprintf(name, sizeof name, "/proc/self/fd/%d", found);
    int file = -1;
    struct stat target;
    const char* path = stat(name, &target) == 0 ? name : link;
    if ((path == name || stat(link, &target) == 0) && may_be_read_through(link, path, target))
        file = open(path, READING);
    close(found);
    return file;
}

bool is_regular_file(int descriptor)
{
    struct stat status;
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
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
