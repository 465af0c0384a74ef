// The story of a run: which check follows which, what is printed, what the result is.
#pragma once

#include "driver_settings.h"
#include "run_options.h"

// Each runs the checks of its mode for the enabled families, IPv4 first, prints what they found on standard output
// where that was asked for, and returns the result code. `settings.interface_name` may be replaced by the interface
// that was used.

// Examines the named interface and probes the servers, every time.
int run_every_time_check(const RunOptions& options, DriverSettings& settings);

// Picks an interface of the list; confirms a family whose full probe succeeded within a day by DNS alone.
int run_terminal_check(const RunOptions& options, DriverSettings& settings);

// Runs the mode that was asked for.
int run_check(const RunOptions& options, DriverSettings& settings);
