#include "shell_pipe.h"

bool open_shell_pipe(const char* command, ShellPipe& pipe)
{
    pipe.stream = popen(command, "r");
    if (pipe.stream == nullptr)
        return false;
    start_reading(pipe.reader, fileno(pipe.stream));
    return true;
}

void close_shell_pipe(ShellPipe& pipe)
{
    pclose(pipe.stream);
}
