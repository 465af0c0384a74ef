#include "probe/probe_targets.h"

#include <cstring>

#include "platform/text_field.h"
#include "probe_hosts.h"

bool select_probe_target(AddressFamily family, int device_class, ProbeUrl& url)
{
    if (device_class == DEVICE_CLASS_CONFIG)
        return split_probe_url(read_probe_config().xmluri, url);
    const ProbeTarget& target = built_in_target(device_class);
    const char* host = probe_host(family, target);
    copy_text(host, std::strlen(host), url.host);
    copy_text(target.path, std::strlen(target.path), url.path);
    url.port = HTTP_PORT;
    return true;
}
