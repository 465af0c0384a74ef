#include "cli/result_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "result_code.h"

namespace
{

constexpr std::uint64_t LAST_FRESH_SECOND = 86399;
constexpr std::size_t RESULT_LINE_SIZE = 256;

bool has_outcome(int code, FamilyOutcome outcome)
{
    return family_nibble(AddressFamily::IPV4, code) == outcome || family_nibble(AddressFamily::IPV6, code) == outcome;
}

// The difference is taken without sign: it cannot overflow, whatever the file holds.
bool is_fresh(std::int64_t now, std::int64_t stamp)
{
    return stamp <= now && static_cast<std::uint64_t>(now) - static_cast<std::uint64_t>(stamp) <= LAST_FRESH_SECOND;
}

void write_result(int descriptor, int code, std::int64_t stamp)
{
    char text[RESULT_LINE_SIZE];
    std::snprintf(text, sizeof text, "%d\n%lld\n", code, static_cast<long long>(stamp));
    // Half a file could read as a success without a time.
    if (!write_text(descriptor, text) && ftruncate(descriptor, 0) != 0)
        delete_result_file();
}

bool is_regular_file(int descriptor)
{
    struct stat status;
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

int without_markers(int code)
{
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        if (family_nibble(family, code) == FRESH_PROBE)
            code = with_family_nibble(family, code, WORKS);
    }
    return code;
}

int parse_result(TextReader& reader, std::int64_t now, std::int64_t& stamp)
{
    stamp = 0;
    char line[RESULT_LINE_SIZE];
    if (!read_piece(reader, line))
        return RESULT_FILE_ABSENT;
    int code = static_cast<int>(std::strtoll(line, nullptr, 10));
    const bool holds_success = has_outcome(code, WORKS) || has_outcome(code, FRESH_PROBE);
    if (holds_success && read_piece(reader, line)) {
        const std::int64_t stored = std::strtoll(line, nullptr, 10);
        if (is_fresh(now, stored))
            stamp = stored;
        else
            code = RESULT_FILE_STALE;
    }
    // A stored 254 holds IPv4's marker, but must not come back as 241, a success.
    return code == RESULT_FILE_STALE ? code : without_markers(code);
}

int read_result_file(std::int64_t& stamp)
{
    stamp = 0;
    struct stat status;
    TextReader reader;
    if (stat(RESULT_FILE_PATH, &status) != 0 || !S_ISREG(status.st_mode) || !open_text_file(RESULT_FILE_PATH, reader))
        return RESULT_FILE_ABSENT;
    const int code = parse_result(reader, std::time(nullptr), stamp);
    close_text_file(reader);
    delete_result_file();
    return code;
}

void write_result_file(int code, std::int64_t stamp)
{
    // Truncated only once it is known to be a regular file, and not waited for when it is a FIFO.
    const int descriptor = open(RESULT_FILE_PATH, O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC,
                                S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH);
    if (descriptor < 0)
        return;
    if (is_regular_file(descriptor) && ftruncate(descriptor, 0) == 0)
        write_result(descriptor, code, has_outcome(code, FRESH_PROBE) ? std::time(nullptr) : stamp);
    close(descriptor);
}

void delete_result_file()
{
    unlink(RESULT_FILE_PATH);
}
