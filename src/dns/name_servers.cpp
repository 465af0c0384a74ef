#include "dns/name_servers.h"

#include <arpa/inet.h>

#include "netinfo/resolver_files.h"

namespace
{

enum class Listing { NONE, FIRST_UNSET, SERVERS };

// Writes the texts of the family's servers into the fields, unset ones behind the first as empty fields; nothing when
// no server is known, and only the first field when the first server is unset.
Listing list_servers(AddressFamily family, NameServerList& list)
{
    NameServerSlots servers;
    if (read_nameservers(family, &servers) == 0)
        return Listing::NONE;
    const void* slots = &servers;
    const auto* slot = static_cast<const unsigned char*>(slots);
    const bool first_unset = is_unset(family, slot);
    const std::size_t listed = first_unset ? 1 : MAX_NAME_SERVERS;
    for (std::size_t i = 0; i < listed; ++i, slot += address_size(family)) {
        if (i == 0 || !is_unset(family, slot))
            inet_ntop(socket_family(family), slot, list.server[i], sizeof list.server[i]);
    }
    return first_unset ? Listing::FIRST_UNSET : Listing::SERVERS;
}

} // namespace

NameServerList collect_name_servers(AddressFamily family)
{
    NameServerList list = {};
    if (family == AddressFamily::IPV4 && list_servers(AddressFamily::IPV4, list) == Listing::SERVERS)
        return list;
    if (list_servers(AddressFamily::IPV6, list) == Listing::FIRST_UNSET)
        list.server[0][0] = '\0';
    return list;
}

Resolution resolve_host(const char* host, AddressFamily family, const NameServerList& list,
                        char (&answer)[ADDRESS_TEXT_SIZE], char (&ifname)[INTERFACE_NAME_SIZE])
{
    if (list.server[0][0] == '\0')
        return Resolution::NO_NAME_SERVER;
    for (const char(&server)[ADDRESS_TEXT_SIZE] : list.server) {
        if (server[0] == '\0')
            break;
        if (dns_query(host, server, answer, family, ifname) == 0)
            return Resolution::FOUND;
    }
    return Resolution::FAILED;
}
