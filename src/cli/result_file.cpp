#include "cli/result_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace
{

constexpr char RESULT_FILE_PATH[] = "/tmp/tolvaneresult";
constexpr std::uint64_t LAST_FRESH_SECOND = 86399;
constexpr std::size_t RESULT_LINE_SIZE = 256;

bool has_outcome(int code, FamilyOutcome outcome)
{
    return family_outcome(AddressFamily::IPV4, code) == outcome || family_outcome(AddressFamily::IPV6, code) == outcome;
}

// The unsigned difference cannot overflow, whatever the file holds.
bool is_fresh(std::int64_t now, std::int64_t stamp)
{
    return stamp <= now && static_cast<std::uint64_t>(now) - static_cast<std::uint64_t>(stamp) <= LAST_FRESH_SECOND;
}

// Anyone may have put a file here since the start of the run. A new file has the right owner and mode, and with O_EXCL
// it is no link, hard or symbolic, to somebody else's.
int create_result_file()
{
    struct stat status;
    if (lstat(RESULT_FILE_PATH, &status) == 0 && S_ISREG(status.st_mode))
        delete_result_file();
    return open(RESULT_FILE_PATH, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH);
}

void write_result(int descriptor, ResultCode code, std::int64_t stamp)
{
    char text[RESULT_LINE_SIZE];
    std::snprintf(text, sizeof text, "%d\n%lld\n", code, static_cast<long long>(stamp));
    // A half-written file could be read as a success with no time stamp.
    if (!write_text(descriptor, text))
        delete_result_file();
}

} // namespace

ResultCode without_markers(int code)
{
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        if (family_outcome(family, code) == FRESH_PROBE)
            code = with_family_outcome(family, code, WORKS);
    }
    return static_cast<ResultCode>(code);
}

ResultCode parse_result(TextReader& reader, std::int64_t now, std::int64_t& stamp)
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
    // A stored 254 holds the marker of IPv4, but must not be returned as 241, a success.
    return code == RESULT_FILE_STALE ? RESULT_FILE_STALE : without_markers(code);
}

ResultCode read_result_file(std::int64_t& stamp)
{
    stamp = 0;
    TextReader reader;
    if (!open_regular_file(RESULT_FILE_PATH, reader))
        return RESULT_FILE_ABSENT;
    const ResultCode code = parse_result(reader, std::time(nullptr), stamp);
    close_text_file(reader);
    delete_result_file();
    return code;
}

void write_result_file(ResultCode code, std::int64_t stamp)
{
    const int descriptor = create_result_file();
    if (descriptor < 0)
        return;
    write_result(descriptor, code, has_outcome(code, FRESH_PROBE) ? std::time(nullptr) : stamp);
    close(descriptor);
}

void delete_result_file()
{
    unlink(RESULT_FILE_PATH);
}
