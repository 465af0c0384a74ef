// The output of a shell command, read as text.
#pragma once

#include <sys/types.h>

#include "platform/text_file.h"

struct ShellPipe {
    pid_t shell;
    TextReader reader;
};

// Starts the command through the shell, its output to be read from pipe.reader. Returns false when it could not be
// started; then there is nothing to close.
bool open_shell_pipe(const char* command, ShellPipe& pipe);

// Waits for the command to end; its status is of no interest.
void close_shell_pipe(ShellPipe& pipe);
