// The options.
#pragma once

#include "cli/driver_settings.h"
#include "run_options.h"

// Applies the arguments after the program's path to records that hold their defaults. Returns true if the checks are to
// run. Returns false if the run is over: after the version option, which prints the version and usage text, an argument
// that is no option, or a value longer than its field.
bool parse_command_line(int argc, const char* const* argv, RunOptions& options, DriverSettings& settings);
