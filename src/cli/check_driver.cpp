#include "cli/check_driver.h"

#include "cli/messages.h"
#include "cli/result_file.h"
#include "dns/name_servers.h"
#include "netinfo/default_routes.h"
#include "netinfo/interface_check.h"
#include "netinfo/resolver_files.h"
#include "netinfo/terminal_scan.h"
#include "probe/http_probe.h"

namespace
{

// Takes over a missing interface, address, gateway or name server. Any other verdict leaves the code to the probes.
ResultCode examine_interface(ResultCode code, const RunOptions& options, const DriverSettings& settings)
{
    const int verdict = check_interface(settings.interface_name, options);
    if (verdict == INTERFACE_MISSING) {
        report_missing_interface(settings);
        return INTERFACE_MISSING;
    }
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        const FamilyOutcome outcome = family_outcome(family, verdict);
        if (is_enabled(family, options) && outcome >= NO_ADDRESS && outcome <= NO_NAME_SERVER) {
            code = with_family_outcome(family, code, outcome);
            report_interface_failure(family, outcome, settings);
        }
    }
    return code;
}

// The full server probe.
FamilyOutcome probe_family(AddressFamily family, const RunOptions& options, DriverSettings& settings)
{
    const int result = probe_server(family, options.device_class, settings.retry_count, settings.interface_name);
    const FamilyOutcome outcome = family_outcome(family, result);
    report_probe_failure(family, outcome, settings);
    return outcome;
}

FamilyOutcome confirm_by_dns(AddressFamily family, const RunOptions& options, DriverSettings& settings)
{
    if (check_dns(family, options.device_class, settings.interface_name) != 0) {
        report_probe_failure(family, DNS_QUERY_FAILED, settings);
        return DNS_QUERY_FAILED;
    }
    report_dns_success(family, settings);
    return WORKS;
}

// `cached` is the code of the last run, `scanned` that of the interface scan.
FamilyOutcome check_terminal_family(AddressFamily family, ResultCode cached, int scanned, const RunOptions& options,
                                    DriverSettings& settings)
{
    if (!is_enabled(family, options))
        return NOT_TESTED;
    if (family_outcome(family, scanned) != WORKS)
        return NO_ADDRESS;
    NetConfig config = {};
    read_gateway(family, settings.interface_name, gateway(family, config));
    read_nameservers(family, name_server_slots(family, config));
    // A missing name server outranks a missing gateway here, unlike in every-time mode.
    if (is_unset(name_server_slots(family, config)[0]))
        return NO_NAME_SERVER;
    if (is_unset(gateway(family, config)))
        return NO_GATEWAY;
    if (family_outcome(family, cached) == WORKS)
        return confirm_by_dns(family, options, settings);
    const FamilyOutcome outcome = probe_family(family, options, settings);
    return outcome == WORKS ? FRESH_PROBE : outcome;
}

} // namespace

ResultCode run_every_time_check(const RunOptions& options, DriverSettings& settings)
{
    delete_result_file();
    // Every enabled family counts as working until a check says otherwise.
    ResultCode code = 0;
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        if (is_enabled(family, options))
            code = with_family_outcome(family, code, WORKS);
    }
    if (settings.interface_check_enabled)
        code = examine_interface(code, options, settings);
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        if (is_enabled(family, options) && family_outcome(family, code) == WORKS)
            code = with_family_outcome(family, code, probe_family(family, options, settings));
    }
    report_final_result(code, options, settings);
    return code;
}

ResultCode run_terminal_check(const RunOptions& options, DriverSettings& settings)
{
    std::int64_t stamp;
    const ResultCode cached = read_result_file(stamp);
    const int scanned = scan_terminal_interfaces(settings.terminal_list, settings.interface_name);
    auto code = static_cast<ResultCode>(scanned);
    if (scanned != NO_INTERFACE_HAS_ADDRESS && scanned != INTERFACE_MISSING) {
        for (const AddressFamily family : ADDRESS_FAMILIES)
            code = with_family_outcome(family, code, check_terminal_family(family, cached, scanned, options, settings));
    }
    write_result_file(code, stamp);
    code = without_markers(code);
    report_final_result(code, options, settings);
    return code;
}
