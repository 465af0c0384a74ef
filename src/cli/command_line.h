// The options.
#pragma once

#include "driver_settings.h"
#include "run_options.h"

// Writes the version and usage text to standard output.
void print_version_and_usage();

// Applies the arguments behind the program's path to records that hold their defaults. Returns true when the checks are
// to run; false when the run is over, after the version option, an argument that is no option, or a value longer than
// its buffer.
bool parse_command_line(int argc, const char* const* argv, RunOptions& options, DriverSettings& settings);
