#include "probe/probe_url.h"

#include <cstdlib>
#include <cstring>

#include "platform/text_field.h"

namespace
{

constexpr char SCHEME[] = "http://";
constexpr std::size_t SCHEME_LENGTH = sizeof SCHEME - 1;

// The leading number of the text, modulo 65536. Not atoi: it is undefined for a number beyond int.
std::uint16_t port_number(const char* text)
{
    const auto port = static_cast<std::uint16_t>(std::strtoll(text, nullptr, 10));
    return port == 0 ? HTTP_PORT : port;
}

// Cuts the text before the first `mark`. Returns the position of the mark, or null if there is none.
const char* cut_before(char* text, char mark)
{
    char* found = std::strchr(text, mark);
    if (found != nullptr)
        *found = '\0';
    return found;
}

} // namespace

bool split_probe_url(const char* url, ProbeUrl& parts)
{
    if (std::strncmp(url, SCHEME, SCHEME_LENGTH) != 0 || url[SCHEME_LENGTH] == '\0')
        return false;
    const char* word = skip_white_space(url + SCHEME_LENGTH);
    copy_text(word, std::strcspn(word, WHITE_SPACE), parts.host);

    const char* slash = std::strchr(parts.host, '/');
    const char* path = slash != nullptr ? slash : "/";
    copy_text(path, std::strlen(path), parts.path);
    cut_before(parts.host, '/');

    const char* colon = cut_before(parts.host, ':');
    parts.port = colon != nullptr ? port_number(colon + 1) : HTTP_PORT;
    return true;
}
