#include "dns/dns_checks.h"

#include "dns/name_servers.h"
#include "probe_hosts.h"

int check_dns(AddressFamily family, int device_class, char (&interface_name)[INTERFACE_NAME_SIZE])
{
    char answer[ADDRESS_TEXT_SIZE];
    const char* host = built_in_target(family, device_class).query_host;
    const Resolution resolution = resolve_host(host, family, collect_name_servers(family), answer, interface_name);
    return resolution == Resolution::FOUND ? 0 : -1;
}
