#include "netinfo/interface_check.h"

#include <cstring>

#include "netinfo/default_routes.h"
#include "netinfo/ifconfig.h"
#include "netinfo/resolver_files.h"
#include "result_code.h"

namespace
{

// True when the output shows that the interface is present.
bool read_ifconfig_output(TextReader& reader, NetConfig& found)
{
    bool present = false;
    char line[IFCONFIG_LINE_SIZE];
    while (read_piece(reader, line)) {
        if (parse_ifconfig_line(line, found).hardware_address)
            present = true;
    }
    return present;
}

// Any DNS server answers questions for IPv4 addresses, but only one that is reached over IPv6 serves IPv6. Only the
// first slot counts; it is unset, too, when the files' first entry does not convert.
bool has_dns_server(AddressFamily family, const NetConfig& config)
{
    if (!is_unset(AddressFamily::IPV6, &config.ipv6_dns[0]))
        return true;
    return family == AddressFamily::IPV4 && !is_unset(AddressFamily::IPV4, &config.ipv4_dns[0]);
}

int find_verdict(AddressFamily family, NetConfig& config)
{
    if (is_unset(family, interface_address(family, config)))
        return NO_ADDRESS;
    if (is_unset(family, gateway(family, config)))
        return NO_GATEWAY;
    if (!has_dns_server(family, config))
        return NO_DNS_SERVER;
    return INTERFACE_READY;
}

} // namespace

void read_gateway_and_nameservers(AddressFamily family, const char* name, NetConfig& config)
{
    char text[INET6_ADDRSTRLEN];
    AnyAddress address;
    if (read_gateway(family, name, text, &address) == 0)
        std::memcpy(gateway(family, config), &address, address_size(family));

    NameServerSlots servers;
    if (read_nameservers(family, &servers) > 0)
        std::memcpy(dns_servers(family, config), &servers, MAX_NAME_SERVERS * address_size(family));
}

int check_interface(const char* name, const RunOptions& options, NetConfig& config)
{
    ShellPipe pipe;
    if (!open_ifconfig(name, pipe))
        return EXAMINATION_IMPOSSIBLE;
    NetConfig found = {};
    const bool present = read_ifconfig_output(pipe.reader, found);
    close_shell_pipe(pipe);
    if (!present)
        return INTERFACE_MISSING;

    std::memcpy(config.hw_addr, found.hw_addr, sizeof config.hw_addr);
    config.ipv4_addr = found.ipv4_addr;
    config.ipv4_mask = found.ipv4_mask;
    config.ipv6_addr = found.ipv6_addr;
    config.ipv6_prefix_len = found.ipv6_prefix_len;
    for (const AddressFamily family : ADDRESS_FAMILIES)
        read_gateway_and_nameservers(family, name, config);

    if (!is_enabled(AddressFamily::IPV4, options) && !is_enabled(AddressFamily::IPV6, options))
        return INTERFACE_READY;
    int code = 0;
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        if (is_enabled(family, options))
            code = with_family_nibble(family, code, find_verdict(family, config));
    }
    return code;
}
