#include "platform/shell_pipe.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

// What popen does, without its stream, its heap and half of its system calls. Returns the shell's process, or -1 when
// it could not be started.
pid_t start_shell(const char* command, int output)
{
    // Until it starts the shell, the child runs in this process's memory, so this one sees how that went.
    volatile bool started = true;
    // NOLINTBEGIN: several checks forbid vfork, since POSIX lets its child only exec or exit. On Linux it may make any
    // system call (vfork(2)), and this one becomes the shell at once.
    const pid_t shell = vfork();
    if (shell == 0) {
        dup2(output, STDOUT_FILENO);
        execl("/bin/sh", "sh", "-c", command, static_cast<char*>(nullptr));
        started = false;
        _exit(127);
    }
    // NOLINTEND
    if (shell < 0 || started)
        return shell;
    waitpid(shell, nullptr, 0);
    return -1;
}

} // namespace

bool open_shell_pipe(const char* command, ShellPipe& pipe)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return false;
    pipe.shell = start_shell(command, ends[1]);
    close(ends[1]);
    start_reading(pipe.reader, ends[0]);
    if (pipe.shell < 0)
        close(ends[0]);
    return pipe.shell >= 0;
}

void close_shell_pipe(ShellPipe& pipe)
{
    close(pipe.reader.descriptor);
    waitpid(pipe.shell, nullptr, 0);
}
