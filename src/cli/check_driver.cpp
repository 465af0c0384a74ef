#include "cli/check_driver.h"

#include <unistd.h>

#include <cstdarg>
#include <cstdio>

#include "cli/result_file.h"
#include "dns/dns_checks.h"
#include "netinfo/interface_check.h"
#include "netinfo/terminal_scan.h"
#include "platform/text_file.h"
#include "probe/http_probe.h"
#include "result_code.h"

namespace
{

// Prints one line at once, so that it comes out in time also into a pipe.
// NOLINTNEXTLINE(cert-dcl50-cpp): the compiler checks the arguments as it checks printf's
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

// The messages about DNS and the server name only IPv6.
const char* family_prefix(AddressFamily family)
{
    return family == AddressFamily::IPV4 ? "" : "IPv6 ";
}

void report_interface_failure(AddressFamily family, int outcome, const DriverSettings& settings)
{
    const char* missing = outcome == NO_ADDRESS ? "IP" : outcome == NO_GATEWAY ? "Gateway" : "DNS Server";
    report(settings, "Network Interface %s does not set %s %s address.\n", settings.interface_name, family_name(family),
           missing);
}

void report_probe_failure(AddressFamily family, int outcome, const DriverSettings& settings)
{
    const char* prefix = family_prefix(family);
    if (outcome == DNS_QUERY_FAILED)
        report(settings, "%sDNS query is error.\n", prefix);
    else if (outcome == CONNECTION_FAILED)
        report(settings, "%sConnection Server is failed.\n", prefix);
    else if (outcome == DOCUMENT_MISMATCH)
        report(settings, "%sXML Data is mismatch.\n", prefix);
}

bool is_working(AddressFamily family, int code, const RunOptions& options)
{
    return is_enabled(family, options) && family_nibble(family, code) == WORKS;
}

void report_final_result(int code, const RunOptions& options, const DriverSettings& settings)
{
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        if (is_working(family, code, options))
            report(settings, "%s Internet connection is successful.\n", family_name(family));
    }
}

// Takes over a missing interface, address, gateway or DNS server; any other verdict leaves the code to the probes.
int examine_interface(int code, const RunOptions& options, const DriverSettings& settings)
{
    NetConfig config = {};
    const int verdict = check_interface(settings.interface_name, options, config);
    if (verdict == INTERFACE_MISSING) {
        report(settings, "Network Interface %s does not exist.\n", settings.interface_name);
        return INTERFACE_MISSING;
    }
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        const int outcome = family_nibble(family, verdict);
        if (is_enabled(family, options) && outcome >= NO_ADDRESS && outcome <= NO_DNS_SERVER) {
            code = with_family_nibble(family, code, outcome);
            report_interface_failure(family, outcome, settings);
        }
    }
    return code;
}

// The outcome of the full server probe, a failure reported. No known name server (-1) becomes NO_NAME_SERVER.
int probe_family(AddressFamily family, const RunOptions& options, DriverSettings& settings)
{
    const int result = probe_server(family, options.device_class, settings.retry_count, settings.interface_name);
    const int outcome = family_nibble(family, result);
    report_probe_failure(family, outcome, settings);
    return outcome;
}

int confirm_by_dns(AddressFamily family, const RunOptions& options, DriverSettings& settings)
{
    if (check_dns(family, options.device_class, settings.interface_name) != 0) {
        report_probe_failure(family, DNS_QUERY_FAILED, settings);
        return DNS_QUERY_FAILED;
    }
    report(settings, "%sDNS query is successful.\n", family_prefix(family));
    return WORKS;
}

// `cached` is the code of the last run, `scanned` that of the interface scan.
int check_terminal_family(AddressFamily family, int cached, int scanned, const RunOptions& options,
                          DriverSettings& settings)
{
    if (!is_enabled(family, options))
        return NOT_TESTED;
    if (family_nibble(family, scanned) != WORKS)
        return NO_ADDRESS;
    NetConfig config = {};
    read_gateway_and_nameservers(family, settings.interface_name, config);
    // A missing DNS server outranks a missing gateway here, unlike in the examination of every-time mode.
    if (is_unset(family, dns_servers(family, config)))
        return NO_DNS_SERVER;
    if (is_unset(family, gateway(family, config)))
        return NO_GATEWAY;
    if (family_nibble(family, cached) == WORKS)
        return confirm_by_dns(family, options, settings);
    const int outcome = probe_family(family, options, settings);
    return outcome == WORKS ? FRESH_PROBE : outcome;
}

} // namespace

int run_every_time_check(const RunOptions& options, DriverSettings& settings)
{
    delete_result_file();
    // Every enabled family counts as working until a check says otherwise.
    int code = 0;
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        if (is_enabled(family, options))
            code = with_family_nibble(family, code, WORKS);
    }
    if (settings.interface_check_enabled)
        code = examine_interface(code, options, settings);
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        if (is_working(family, code, options))
            code = with_family_nibble(family, code, probe_family(family, options, settings));
    }
    report_final_result(code, options, settings);
    return code;
}

int run_terminal_check(const RunOptions& options, DriverSettings& settings)
{
    std::int64_t stamp;
    const int cached = read_result_file(stamp);
    const int scanned = scan_terminal_interfaces(settings.terminal_list, settings.interface_name);
    int code = scanned;
    if (scanned != NO_INTERFACE_HAS_ADDRESS && scanned != INTERFACE_MISSING) {
        for (const AddressFamily family : ADDRESS_FAMILIES)
            code = with_family_nibble(family, code, check_terminal_family(family, cached, scanned, options, settings));
    }
    write_result_file(code, stamp);
    code = without_markers(code);
    report_final_result(code, options, settings);
    return code;
}

int run_check(const RunOptions& options, DriverSettings& settings)
{
    return options.check_mode == MODE_TERMINAL ? run_terminal_check(options, settings)
                                               : run_every_time_check(options, settings);
}
