#include "netinfo/interface_check.h"

#include "netinfo/default_routes.h"
#include "netinfo/ifconfig.h"
#include "netinfo/resolver_files.h"
#include "result_code.h"

namespace
{

// Returns whether the output shows that the interface is present.
bool read_ifconfig_output(TextReader& output, NetConfig& config)
{
    bool present = false;
    char line[IFCONFIG_LINE_SIZE];
    while (read_piece(output, line)) {
        if (parse_ifconfig_line(line, config).hardware_address)
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

// Reads no more than a verdict needs: printing a route table costs the kernel as much as all our other reads together.
void read_gateway_and_name_servers(AddressFamily family, const InterfaceName& interface_name, const RunOptions& options,
                                   NetConfig& config)
{
    const bool enabled = is_enabled(family, options);
    if (enabled)
        read_gateway(family, interface_name, gateway(family, config));
    // IPv4 can use the name servers of IPv6.
    if (enabled || (family == AddressFamily::IPV6 && is_unset(config.ipv4_dns[0])))
        read_nameservers(family, name_server_slots(family, config));
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

int check_interface(const InterfaceName& interface_name, const RunOptions& options)
{
    Tool ifconfig;
    if (!start_ifconfig(interface_name.text, ifconfig))
        return EXAMINATION_IMPOSSIBLE;
    NetConfig config = {};
    const bool present = read_ifconfig_output(ifconfig.output, config);
    finish_tool(ifconfig);
    if (!present)
        return INTERFACE_MISSING;

    for (const AddressFamily family : ADDRESS_FAMILIES)
        read_gateway_and_name_servers(family, interface_name, options, config);
    if (!is_enabled(AddressFamily::IPV4, options) && !is_enabled(AddressFamily::IPV6, options))
        return INTERFACE_READY;
    ResultCode code = 0;
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        if (is_enabled(family, options))
            code = with_family_outcome(family, code, find_verdict(family, config));
    }
    return code;
}
