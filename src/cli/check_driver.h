// The story of a run: which check follows which, what is printed, what the result is.
#pragma once

#include "cli/driver_settings.h"
#include "result_code.h"
#include "run_options.h"

// Both functions run the checks of their mode for the enabled families, IPv4 first, print what they found on standard
// output if that was asked for, and return the result code. `settings.interface_name` may be replaced by the interface
// that was used.

// Examines the named interface and probes the servers, every time.
ResultCode run_every_time_check(const RunOptions& options, DriverSettings& settings);

// Picks an interface of the list. A family whose full probe succeeded less than a day ago is confirmed by DNS only.
ResultCode run_terminal_check(const RunOptions& options, DriverSettings& settings);
