// The lines that a run prints on standard output, if that was asked for.
#pragma once

#include "cli/driver_settings.h"
#include "result_code.h"
#include "run_options.h"

void report_missing_interface(const DriverSettings& settings);

// `outcome` is NO_ADDRESS, NO_GATEWAY or NO_NAME_SERVER.
void report_interface_failure(AddressFamily family, FamilyOutcome outcome, const DriverSettings& settings);

// Only DNS_QUERY_FAILED, CONNECTION_FAILED and DOCUMENT_MISMATCH have a line.
void report_probe_failure(AddressFamily family, FamilyOutcome outcome, const DriverSettings& settings);

// A terminal run has confirmed the family by DNS.
void report_dns_success(AddressFamily family, const DriverSettings& settings);

// Prints a line for each enabled family that works.
void report_final_result(ResultCode code, const RunOptions& options, const DriverSettings& settings);
