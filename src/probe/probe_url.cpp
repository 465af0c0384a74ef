#include "probe/probe_url.h"

#include <cstdlib>
#include <cstring>

namespace
{

constexpr char SCHEME[] = "http://";
constexpr std::size_t SCHEME_LENGTH = sizeof SCHEME - 1;
constexpr char WHITE_SPACE[] = " \t\n\v\f\r";

// The number that leads the text as atoi reads it, modulo 65536; atoi itself may do anything with a number beyond int.
std::uint16_t port_number(const char* text)
{
    const auto port = static_cast<std::uint16_t>(std::strtoll(text, nullptr, 10));
    return port == 0 ? HTTP_PORT : port;
}

} // namespace

bool split_probe_url(const char* url, ProbeUrl& parts)
{
    if (std::strncmp(url, SCHEME, SCHEME_LENGTH) != 0 || url[SCHEME_LENGTH] == '\0')
        return false;
    const char* word = url + SCHEME_LENGTH;
    word += std::strspn(word, WHITE_SPACE);
    std::size_t length = std::strcspn(word, WHITE_SPACE);
    if (length > URL_WORD_SIZE - 1)
        length = URL_WORD_SIZE - 1;
    std::memcpy(parts.host, word, length);
    parts.host[length] = '\0';

    char* slash = std::strchr(parts.host, '/');
    const char* path = slash != nullptr ? slash : "/";
    std::memcpy(parts.path, path, std::strlen(path) + 1);
    if (slash != nullptr)
        *slash = '\0';

    char* colon = std::strchr(parts.host, ':');
    parts.port = colon != nullptr ? port_number(colon + 1) : HTTP_PORT;
    if (colon != nullptr)
        *colon = '\0';
    return true;
}
