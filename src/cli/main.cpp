// The start of the program.
#include <fcntl.h>
#include <unistd.h>

#include <csignal>

#include "cli/check_driver.h"
#include "cli/command_line.h"

namespace
{

constexpr int ENDED_BY_ARGUMENTS = 255;

// Without /dev/null, use the root directory: writing to it fails just as silently.
int open_null_device()
{
    const int descriptor = open("/dev/null", O_RDWR);
    return descriptor >= 0 ? descriptor : open("/", O_RDONLY);
}

// Standard error goes nowhere, for the tools that the program starts, too. Closed standard descriptors are opened, so
// that no socket or file becomes one of them.
void guard_standard_descriptors()
{
    int null_device;
    do
        null_device = open_null_device();
    while (null_device >= 0 && null_device < STDERR_FILENO);
    if (null_device <= STDERR_FILENO)
        return;
    dup2(null_device, STDERR_FILENO);
    close(null_device);
}

// Whoever limits the time of a run sends one of these signals. A caller that blocks or ignores them passes that on.
void accept_time_limits()
{
    std::signal(SIGALRM, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    sigset_t limits;
    sigemptyset(&limits);
    sigaddset(&limits, SIGALRM);
    sigaddset(&limits, SIGTERM);
    sigprocmask(SIG_UNBLOCK, &limits, nullptr);
}

} // namespace

int main(int argc, char** argv)
{
    accept_time_limits();
    // A server that resets the connection, a reader that went away and a file that may not grow become failed writes.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    guard_standard_descriptors();

    RunOptions options;
    DriverSettings settings;
    if (!parse_command_line(argc, argv, options, settings))
        return ENDED_BY_ARGUMENTS;
    return options.check_mode == MODE_TERMINAL ? run_terminal_check(options, settings)
                                               : run_every_time_check(options, settings);
}
