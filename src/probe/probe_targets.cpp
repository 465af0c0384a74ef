#include "probe/probe_targets.h"

#include <cstring>

#include "probe_hosts.h"

namespace
{

template <std::size_t SIZE> void copy_text(const char* text, char (&field)[SIZE])
{
    const std::size_t length = strnlen(text, SIZE - 1);
    std::memcpy(field, text, length);
    field[length] = '\0';
}

} // namespace

bool select_probe_target(AddressFamily family, int device_class, ProbeUrl& url)
{
    if (device_class == DEVICE_CLASS_CONFIG)
        return split_probe_url(read_probe_config().xmluri, url);
    const ProbeTarget& target = built_in_target(family, device_class);
    copy_text(target.query_host, url.host);
    copy_text(target.path, url.path);
    url.port = HTTP_PORT;
    return true;
}
