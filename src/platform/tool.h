// A tool of the system that runs next to the checker, its output read as text.
#pragma once

#include <sys/types.h>

#include "platform/text_io.h"

struct Tool {
    pid_t process;
    TextReader output;
};

// Starts a tool, without a shell. A name without a slash is looked up in PATH, or in the usual directories if PATH is
// not set. `argument` is the tool's only argument; null means none. `input` (at most 4096 bytes, PIPE_BUF) is its
// standard input; with null it keeps the caller's. The tool inherits the environment (its first 500 variables) with the
// locale set to C, and is killed if this process ends first. Only a file that the kernel refuses as unknown (ENOEXEC)
// is run by /bin/sh. Returns false if a pipe or the process could not be made; then there is nothing to finish. A tool
// that cannot be executed is a tool without output.
bool start_tool(const char* name, const char* argument, const char* input, Tool& tool);

// Waits for the tool to end. Its exit status does not matter.
void finish_tool(Tool& tool);
