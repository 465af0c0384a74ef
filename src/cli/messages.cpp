#include "cli/messages.h"

#include <unistd.h>

#include <cstdarg>
#include <cstdio>

#include "platform/text_io.h"

namespace
{

constexpr std::size_t MESSAGE_SIZE = 128; // more than the longest line, with an interface name of 19 characters, has

// Prints a line at once, so that it is not late in a pipe.
// NOLINTNEXTLINE(cert-dcl50-cpp): the compiler checks the arguments as those of printf
__attribute__((format(printf, 2, 3))) void report(const DriverSettings& settings, const char* format, ...)
{
    if (!settings.display_result)
        return;
    char line[MESSAGE_SIZE];
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

// The lines about DNS and the probe server do not name IPv4.
const char* family_prefix(AddressFamily family)
{
    return family == AddressFamily::IPV4 ? "" : "IPv6 ";
}

} // namespace

void report_missing_interface(const DriverSettings& settings)
{
    report(settings, "Network Interface %s does not exist.\n", settings.interface_name.text);
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

void report_dns_success(AddressFamily family, const DriverSettings& settings)
{
    report(settings, "%sDNS query is successful.\n", family_prefix(family));
}

void report_final_result(ResultCode code, const RunOptions& options, const DriverSettings& settings)
{
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        if (is_enabled(family, options) && family_outcome(family, code) == WORKS)
            report(settings, "%s Internet connection is successful.\n", family_name(family));
    }
}
