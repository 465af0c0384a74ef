#include "dns/name_servers.h"

#include "netinfo/resolver_files.h"
#include "probe_hosts.h"

namespace
{

int count_before_unset(const NameServerSlots& servers)
{
    int count = 0;
    while (count < static_cast<int>(MAX_NAME_SERVERS) && !is_unset(servers[count]))
        ++count;
    return count;
}

} // namespace

NameServerList collect_name_servers(AddressFamily family)
{
    NameServerList list;
    bool has_ipv4_entry = false;
    if (family == AddressFamily::IPV4) {
        has_ipv4_entry = read_nameservers(AddressFamily::IPV4, list.servers) > 0;
        list.count = count_before_unset(list.servers);
        if (list.count > 0)
            return list;
    }
    const bool has_ipv6_entry = read_nameservers(AddressFamily::IPV6, list.servers) > 0;
    list.count = count_before_unset(list.servers);
    if (has_ipv4_entry && !has_ipv6_entry) {
        list.servers[0] = {AddressFamily::IPV4, {}};
        list.count = 1;
    }
    return list;
}

Resolution resolve_host(const char* host, AddressFamily family, const NameServerList& list, IpAddress& answer,
                        InterfaceName& interface_name)
{
    if (list.count == 0)
        return Resolution::NO_NAME_SERVER;
    for (int i = 0; i < list.count; ++i) {
        if (dns_query(host, list.servers[i], answer, family, interface_name) == 0)
            return Resolution::FOUND;
    }
    return Resolution::FAILED;
}

int check_dns(AddressFamily family, int device_class, InterfaceName& interface_name)
{
    IpAddress answer;
    const char* host = probe_host(family, built_in_target(device_class));
    const Resolution resolution = resolve_host(host, family, collect_name_servers(family), answer, interface_name);
    return resolution == Resolution::FOUND ? 0 : -1;
}
