#include "platform/tool.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{

constexpr std::size_t MAX_VARIABLES = 500;
constexpr char DEFAULT_PATH[] = "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin";

// The words of a command line, after a place for the shell that may have to read the tool.
struct CommandLine {
    const char* words[4];
};

struct Environment {
    const char* variables[MAX_VARIABLES + 2]; // and LANG, and the end
};

bool sets_locale(const char* variable)
{
    return std::strncmp(variable, "LANG=", 5) == 0 || std::strncmp(variable, "LANGUAGE=", 9) == 0 ||
           std::strncmp(variable, "LC_", 3) == 0;
}

void make_environment(Environment& environment)
{
    std::size_t count = 0;
    environment.variables[count++] = "LANG=C";
    for (char** variable = environ; *variable != nullptr && count <= MAX_VARIABLES; ++variable) {
        if (!sets_locale(*variable))
            environment.variables[count++] = *variable;
    }
    environment.variables[count] = nullptr;
}

// Returns only if the file cannot be executed. A file that is neither a binary nor begins with "#!" is read by the
// shell (POSIX.1-2017, Shell Command Language, 2.9.1): some devices wrap their tools in such scripts.
void execute_file(const char* path, CommandLine& command, const Environment& environment)
{
    auto* const* words = const_cast<char* const*>(command.words);
    auto* const* variables = const_cast<char* const*>(environment.variables);
    execve(path, words + 1, variables);
    if (errno == ENOEXEC) {
        const char* name = command.words[1];
        command.words[1] = path;
        execve("/bin/sh", words, variables);
        command.words[1] = name;
    }
}

// Tries each directory of PATH in turn, as a shell does; an empty one is the current directory (POSIX.1-2017, Base
// Definitions, 8.3).
void execute_tool(CommandLine& command, const Environment& environment)
{
    const char* name = command.words[1];
    if (std::strchr(name, '/') != nullptr) {
        execute_file(name, command, environment);
        return;
    }
    const char* directory = std::getenv("PATH");
    if (directory == nullptr)
        directory = DEFAULT_PATH;
    for (;;) {
        const std::size_t length = std::strcspn(directory, ":");
        char path[PATH_MAX];
        const int needed = std::snprintf(path, sizeof path, "%.*s%s%s", static_cast<int>(length), directory,
                                         length > 0 ? "/" : "", name);
        if (needed < static_cast<int>(sizeof path))
            execute_file(path, command, environment);
        if (directory[length] == '\0')
            return;
        directory += length + 1;
    }
}

// Returns the process, or -1 if it could not be made. `input` is -1 for a tool that keeps this process's.
pid_t start_process(CommandLine& command, int input, int output)
{
    Environment environment;
    make_environment(environment);
    const pid_t parent = getpid();
    // NOLINTBEGIN: several checks forbid vfork, since POSIX lets its child only exec or exit. On Linux it may make any
    // system call (vfork(2)), and this one becomes the tool at once.
    const pid_t process = vfork();
    if (process == 0) {
        // The parent may have been killed before the request takes effect. A parent in another pid namespace is 0.
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const pid_t parent_now = getppid();
        if (parent_now == parent || parent_now == 0) {
            // Signals that this process ignores would be ignored by the tool, too.
            std::signal(SIGPIPE, SIG_DFL);
            std::signal(SIGXFSZ, SIG_DFL);
            if (input >= 0)
                dup2(input, STDIN_FILENO);
            dup2(output, STDOUT_FILENO);
            execute_tool(command, environment);
        }
        _exit(127);
    }
    // NOLINTEND
    return process;
}

// Returns the reading end of a pipe that holds the text and is closed for writing, or -1.
int make_input(const char* text)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return -1;
    const bool written = write_text(ends[1], text);
    close(ends[1]);
    if (written)
        return ends[0];
    close(ends[0]);
    return -1;
}

bool start_with_output(CommandLine& command, int input, Tool& tool)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return false;
    tool.process = start_process(command, input, ends[1]);
    close(ends[1]);
    start_reading(tool.output, ends[0]);
    if (tool.process < 0)
        close(ends[0]);
    return tool.process >= 0;
}

} // namespace

bool start_tool(const char* name, const char* argument, const char* input, Tool& tool)
{
    CommandLine command = {{"sh", name, argument, nullptr}};
    if (input == nullptr)
        return start_with_output(command, -1, tool);
    const int input_end = make_input(input);
    if (input_end < 0)
        return false;
    const bool started = start_with_output(command, input_end, tool);
    close(input_end);
    return started;
}

void finish_tool(Tool& tool)
{
    close(tool.output.descriptor);
    waitpid(tool.process, nullptr, 0);
}
