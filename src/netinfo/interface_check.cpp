#include "netinfo/interface_check.h"

#include <cstring>

#include "netinfo/default_routes.h"
#include "netinfo/ifconfig.h"
#include "netinfo/resolver_files.h"
#include "result_code.h"

namespace
{

// Returns whether the output shows that the interface is present.
bool read_ifconfig_output(TextReader& output, NetConfig& found)
{
    bool present = false;
    char line[IFCONFIG_LINE_SIZE];
    while (read_piece(output, line)) {
        if (parse_ifconfig_line(line, found).hardware_address)
            present = true;
    }
    return present;
}

// Any name server answers questions for IPv4 addresses, but only one that is reached over IPv6 serves IPv6. Only the
// first slot counts. It is also unset if the first entry of the files does not convert.
bool has_name_server(AddressFamily family, const NetConfig& config)
{
    if (!is_unset(config.ipv6_dns[0]))
        return true;
    return family == AddressFamily::IPV4 && !is_unset(config.ipv4_dns[0]);
}

// Printing a route table costs the kernel as much as all our other reads together.
void read_what_verdicts_need(AddressFamily family, const InterfaceName& interface_name, const RunOptions& options,
                             NetConfig& config)
{
    const bool enabled = is_enabled(family, options);
    if (enabled)
        read_gateway_of(family, interface_name, config);
    // IPv4 can use the name servers of IPv6.
    if (enabled || (family == AddressFamily::IPV6 && is_unset(config.ipv4_dns[0])))
        read_name_servers_of(family, config);
}

FamilyOutcome find_verdict(AddressFamily family, NetConfig& config)
{
    if (is_unset(interface_address(family, config)))
        return NO_ADDRESS;
    if (is_unset(gateway(family, config)))
        return NO_GATEWAY;
    if (!has_name_server(family, config))
        return NO_NAME_SERVER;
    return INTERFACE_READY;
}

} // namespace

void read_gateway_of(AddressFamily family, const InterfaceName& interface_name, NetConfig& config)
{
    IpAddress found;
    if (read_gateway(family, interface_name, found) == 0)
        gateway(family, config) = found;
}

void read_name_servers_of(AddressFamily family, NetConfig& config)
{
    NameServerSlots found;
    if (read_nameservers(family, found) > 0)
        std::memcpy(name_server_slots(family, config), found, sizeof found);
}

int check_interface(const InterfaceName& interface_name, const RunOptions& options, NetConfig& config)
{
    Tool ifconfig;
    if (!start_ifconfig(interface_name.text, ifconfig))
        return EXAMINATION_IMPOSSIBLE;
    NetConfig found = {};
    const bool present = read_ifconfig_output(ifconfig.output, found);
    finish_tool(ifconfig);
    if (!present)
        return INTERFACE_MISSING;

    std::memcpy(config.hw_addr, found.hw_addr, sizeof config.hw_addr);
    config.ipv4_addr = found.ipv4_addr;
    config.ipv4_mask = found.ipv4_mask;
    config.ipv6_addr = found.ipv6_addr;
    config.ipv6_prefix_len = found.ipv6_prefix_len;
    for (const AddressFamily family : ADDRESS_FAMILIES)
        read_what_verdicts_need(family, interface_name, options, config);

    if (!is_enabled(AddressFamily::IPV4, options) && !is_enabled(AddressFamily::IPV6, options))
        return INTERFACE_READY;
    ResultCode code = 0;
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        if (is_enabled(family, options))
            code = with_family_outcome(family, code, find_verdict(family, config));
    }
    return code;
}
