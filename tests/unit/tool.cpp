#include "platform/tool.h"

#include <sys/resource.h>

#include <csignal>

#include "folder.h"

using ToolTest = FolderTest;

static string output_of(const char* name, const char* argument = nullptr)
{
    Tool tool;
    EXPECT_TRUE(start_tool(name, argument, "input\n", tool));
    string output;
    for (char piece[1000]; read_piece(tool.output, piece);)
        output += piece;
    finish_tool(tool);
    return output;
}

TEST_F(ToolTest, MayBeAScriptWithoutInterpreterLine)
{
    write_file("tool", "printf '%s;' \"$0\" $# \"$1\"\ncat\n", 0755);
    EXPECT_EQ(output_of("./tool", "-n $(id) '\\n\" *"), "./tool;1;-n $(id) '\\n\" *;input\n");
    EXPECT_EQ(output_of("./tool"), "./tool;0;;input\n");
}

TEST_F(ToolTest, InheritsTheFirst500VariablesButNotTheLocale)
{
    clearenv();
    for (const char* name : {"LANG", "A", "LANGUAGE", "LC_ALL", "LANGUAGES", "LCD"})
        setenv(name, "1", 1);
    for (int i = 4; i <= 501; ++i)
        setenv(("V" + std::to_string(i)).c_str(), "", 1);
    const string inherited = output_of("/usr/bin/env");
    EXPECT_EQ(inherited.find("LANG=C\nA=1\nLANGUAGES=1\nLCD=1\nV4="), 0U);
    EXPECT_EQ(inherited.substr(inherited.size() - 12), "V499=\nV500=\n");
}

TEST_F(ToolTest, IsTheFirstExecutableFileInPath)
{
    std::filesystem::create_directory("first");
    write_file("first/tool", "#!/bin/sh\necho first\n");
    write_file("tool", "#!/bin/sh\necho here\n", 0755);
    setenv("PATH", "missing:first:", 1);
    EXPECT_EQ(output_of("tool"), "here\n");
    unsetenv("PATH"); // for later tests
}

TEST_F(ToolTest, IsEndedBySignalsThatItsCallerIgnores)
{
    write_file("tool", "#!/bin/sh\nkill -s \"$1\" $$\necho alive\n", 0755);
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    EXPECT_EQ(output_of("./tool", "PIPE") + output_of("./tool", "XFSZ"), "");
    std::signal(SIGPIPE, SIG_DFL);
    std::signal(SIGXFSZ, SIG_DFL);
}

// The input takes two descriptors, one of which remains open; then the output takes two.
TEST_F(ToolTest, IsNotStartedWithoutItsPipes)
{
    rlimit before;
    getrlimit(RLIMIT_NOFILE, &before);
    const int lowest = dup(0);
    close(lowest);
    Tool tool;
    for (const rlim_t free : {1, 2}) {
        const rlimit few = {static_cast<rlim_t>(lowest) + free, before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &few);
        EXPECT_FALSE(start_tool("true", nullptr, "", tool)) << free;
    }
    setrlimit(RLIMIT_NOFILE, &before);
}
