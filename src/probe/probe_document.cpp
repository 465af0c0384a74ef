#include "probe/probe_document.h"

#include <strings.h>

#include <cstring>

#include "platform/shell_pipe.h"
#include "platform/shell_word.h"

namespace
{

constexpr char DECLARATION[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
constexpr char ROOT_START[] = "<tolvane date=\"";
constexpr char DATE_END[] = "\">";
constexpr char CHECKSUM_START[] = "\t<checksum>";
constexpr char CHECKSUM_END[] = "</checksum>";

constexpr std::size_t DIGEST_LENGTH = 32;
constexpr std::size_t DIGEST_LINE_SIZE = 512;

// printf, not echo: what echo makes of backslashes and of a leading "-n" depends on the shell.
constexpr char COMMAND_START[] = "printf %s ";
constexpr char COMMAND_END[] = " | md5sum";
constexpr std::size_t COMMAND_SIZE = 256;

// Copies what stands between the first `start` of the chunk and the next `end`, as far as it fits; false when there is
// no start or nothing behind it. Without an end the text reaches to the end of the chunk.
template <std::size_t SIZE> bool copy_between(const char* chunk, const char* start, const char* end, char (&text)[SIZE])
{
    const char* found = std::strstr(chunk, start);
    if (found == nullptr)
        return false;
    found += std::strlen(start);
    const char* stop = std::strstr(found, end);
    std::size_t length = stop != nullptr ? static_cast<std::size_t>(stop - found) : std::strlen(found);
    if (length > SIZE - 1)
        length = SIZE - 1;
    std::memcpy(text, found, length);
    text[length] = '\0';
    return length > 0;
}

} // namespace

bool find_probe_document(const char* chunk, ProbeDocument& document)
{
    return std::strstr(chunk, DECLARATION) != nullptr && copy_between(chunk, ROOT_START, DATE_END, document.date) &&
           copy_between(chunk, CHECKSUM_START, CHECKSUM_END, document.checksum);
}

void take_digest(TextReader& output, char (&digest)[DIGEST_FIELD_SIZE])
{
    char line[DIGEST_LINE_SIZE];
    while (read_piece(output, line)) {
        if (std::strlen(line) >= DIGEST_LENGTH)
            std::memcpy(digest, line, DIGEST_LENGTH);
    }
}

void md5_hex_digest(const char* text, char (&digest)[DIGEST_FIELD_SIZE])
{
    char command[COMMAND_SIZE];
    std::size_t length = sizeof COMMAND_START - 1;
    std::memcpy(command, COMMAND_START, length);
    const std::size_t word_length =
        quote_shell_word(text, command + length, sizeof command - length - sizeof COMMAND_END);
    if (word_length == 0)
        return;
    length += word_length;
    std::memcpy(command + length, COMMAND_END, sizeof COMMAND_END);

    ShellPipe pipe;
    if (!open_shell_pipe(command, pipe))
        return;
    take_digest(pipe.reader, digest);
    close_shell_pipe(pipe);
}

bool verify_probe_chunk(const char* chunk)
{
    // The checksum is looked for before the digest is computed: a chunk that lacks it starts no process.
    ProbeDocument document;
    if (!find_probe_document(chunk, document))
        return false;
    char digest[DIGEST_FIELD_SIZE] = "";
    md5_hex_digest(document.date, digest);
    return std::strlen(digest) == DIGEST_LENGTH && strcasecmp(document.checksum, digest) == 0;
}
