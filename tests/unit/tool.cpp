#include "platform/tool.h"

#include "folder.h"

struct ToolTest : FolderTest {
    char** inherited = environ;

    void TearDown() override
    {
        environ = inherited;
        FolderTest::TearDown();
    }
};

// What a tool prints that is started in this environment.
static string output_in(vector<const char*> variables, const char* name, const char* argument = nullptr)
{
    variables.push_back(nullptr);
    environ = const_cast<char**>(variables.data());
    Tool tool;
    EXPECT_TRUE(start_tool(name, argument, "input\n", tool));
    string output;
    for (char piece[1000]; read_piece(tool.output, piece);)
        output += piece;
    finish_tool(tool);
    return output;
}

TEST_F(ToolTest, GetsItsArgumentAndInputAsTheyAre)
{
    write_file("tool", "#!/bin/sh\nprintf '%s;' $# \"$1\"\ncat\n", 0755);
    EXPECT_EQ(output_in({}, "./tool", "-n $(id) '\\n\" *"), "1;-n $(id) '\\n\" *;input\n");
    EXPECT_EQ(output_in({}, "./tool"), "0;;input\n");
}

TEST_F(ToolTest, InheritsTheEnvironmentButNotTheLocale)
{
    const vector<const char*> variables = {"LANG=de", "A=1", "LANGUAGE=de", "LC_ALL=de", "LANGUAGES=2", "LCD=3"};
    EXPECT_EQ(output_in(variables, "/usr/bin/env"), "LANG=C\nA=1\nLANGUAGES=2\nLCD=3\n");
}

TEST_F(ToolTest, InheritsTheFirst500Variables)
{
    const vector<const char*> variables(600, "A=1");
    EXPECT_EQ(output_in(variables, "/usr/bin/env"), "LANG=C\n" + times(500, "A=1\n"));
}

TEST_F(ToolTest, IsTheFirstExecutableFileInPath)
{
    std::filesystem::create_directory("1");
    std::filesystem::create_directory("2");
    write_file("1/tool", "#!/bin/sh\necho 1\n");
    write_file("2/tool", "#!/bin/sh\necho 2\n", 0755);
    write_file("tool", "#!/bin/sh\necho here\n", 0755);
    EXPECT_EQ(output_in({"PATH=missing:1:2:"}, "tool"), "2\n");
    EXPECT_EQ(output_in({"PATH=missing:1:"}, "tool"), "here\n");
}

TEST_F(ToolTest, MayBeAScriptWithoutInterpreterLine)
{
    write_file("tool", "echo \"$0 $#: $1\"\n", 0755);
    EXPECT_EQ(output_in({"PATH=."}, "tool", "a b"), "./tool 1: a b\n");
}
