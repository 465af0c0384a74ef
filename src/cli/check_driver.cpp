#include "cli/check_driver.h"

#include <unistd.h>

#include <cstdarg>
#include <cstdio>

#include "cli/result_file.h"
#include "dns/name_servers.h"
#include "netinfo/interface_check.h"
#include "netinfo/terminal_scan.h"
#include "platform/text_io.h"
#include "probe/http_probe.h"

namespace
{

// Prints a line at once, so that it is not late in a pipe.
// NOLINTNEXTLINE(cert-dcl50-cpp): the compiler checks the arguments as those of printf
__attribute__((format(printf, 2, 3))) void report(const DriverSettings& settings, const char* format, ...)
{
    if (!settings.display_result)
        return;
    char line[128];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    write_text(STDOUT_FILENO, line);
}

const char* family_name(AddressFamily family)
{
    return family == AddressFamily::IPV4 ? "IPv4" : "IPv6";
}

// The messages about DNS and the probe server do not name IPv4.
const char* family_prefix(AddressFamily family)
{
    return family == AddressFamily::IPV4 ? "" : "IPv6 ";
}

void report_interface_failure(AddressFamily family, FamilyOutcome outcome, const DriverSettings& settings)
{
    const char* missing = outcome == NO_ADDRESS ? "IP" : outcome == NO_GATEWAY ? "Gateway" : "DNS Server";
    report(settings, "Network Interface %s does not set %s %s address.\n", settings.interface_name.text,
           family_name(family), missing);
}

void report_probe_failure(AddressFamily family, FamilyOutcome outcome, const DriverSettings& settings)
{
    const char* prefix = family_prefix(family);
    if (outcome == DNS_QUERY_FAILED)
        report(settings, "%sDNS query is error.\n", prefix);
    else if (outcome == CONNECTION_FAILED)
        report(settings, "%sConnection Server is failed.\n", prefix);
    else if (outcome == DOCUMENT_MISMATCH)
        report(settings, "%sXML Data is mismatch.\n", prefix);
}

bool is_working(AddressFamily family, ResultCode code, const RunOptions& options)
{
    return is_enabled(family, options) && family_outcome(family, code) == WORKS;
}

void report_final_result(ResultCode code, const RunOptions& options, const DriverSettings& settings)
{
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        if (is_working(family, code, options))
            report(settings, "%s Internet connection is successful.\n", family_name(family));
    }
}

// Takes over a missing interface, address, gateway or name server. Any other verdict leaves the code to the probes.
ResultCode examine_interface(ResultCode code, const RunOptions& options, const DriverSettings& settings)
{
    NetConfig config = {};
    const int verdict = check_interface(settings.interface_name, options, config);
    if (verdict == INTERFACE_MISSING) {
        report(settings, "Network Interface %s does not exist.\n", settings.interface_name.text);
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

// Returns the outcome of the full server probe and reports a failure. The result -1 becomes NO_USABLE_NAME_SERVER.
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
    report(settings, "%sDNS query is successful.\n", family_prefix(family));
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
    read_gateway_of(family, settings.interface_name, config);
    read_name_servers_of(family, config);
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
        if (is_working(family, code, options))
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
