#include "probe/probe_document.h"

#include <strings.h>

#include <cstring>

#include "platform/text_field.h"
#include "platform/tool.h"

namespace
{

constexpr char DECLARATION[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
constexpr char ROOT_START[] = "<tolvane date=\"";
constexpr char DATE_END[] = "\">";
constexpr char CHECKSUM_START[] = "\t<checksum>";
constexpr char CHECKSUM_END[] = "</checksum>";

constexpr std::size_t DIGEST_LENGTH = 32;
constexpr std::size_t DIGEST_LINE_SIZE = 512;

// Copies the text between the first `start` of the chunk and the next `end`, as far as it fits. Without an end the text
// reaches to the end of the chunk. Returns false if there is no start or nothing after it.
bool copy_between(const char* chunk, const char* start, const char* end, char* text, std::size_t size)
{
    const char* found = std::strstr(chunk, start);
    if (found == nullptr)
        return false;
    found += std::strlen(start);
    const char* stop = std::strstr(found, end);
    copy_text(found, stop != nullptr ? static_cast<std::size_t>(stop - found) : std::strlen(found), text, size);
    return text[0] != '\0';
}

// Leaves `digest`, a field of zeros, empty if the system's md5sum prints none. MD5 is that of RFC 1321.
void md5_hex_digest(const char* text, char (&digest)[DIGEST_FIELD_SIZE])
{
    Tool md5sum;
    if (!start_tool("md5sum", nullptr, text, md5sum))
        return;
    take_digest(md5sum.output, digest);
    finish_tool(md5sum);
}

} // namespace

bool find_probe_document(const char* chunk, ProbeDocument& document)
{
    return std::strstr(chunk, DECLARATION) != nullptr &&
           copy_between(chunk, ROOT_START, DATE_END, document.date, sizeof document.date) &&
           copy_between(chunk, CHECKSUM_START, CHECKSUM_END, document.checksum, sizeof document.checksum);
}

void take_digest(TextReader& output, char (&digest)[DIGEST_FIELD_SIZE])
{
    char line[DIGEST_LINE_SIZE];
    while (read_piece(output, line)) {
        if (std::strlen(line) >= DIGEST_LENGTH)
            std::memcpy(digest, line, DIGEST_LENGTH);
    }
}

bool verify_probe_chunk(const char* chunk)
{
    // The checksum is looked for before the digest is computed: a chunk without one starts no process.
    ProbeDocument document;
    if (!find_probe_document(chunk, document))
        return false;
    char digest[DIGEST_FIELD_SIZE] = "";
    md5_hex_digest(document.date, digest);
    return std::strlen(digest) == DIGEST_LENGTH && strncasecmp(document.checksum, digest, CHECKSUM_SIZE) == 0;
}
