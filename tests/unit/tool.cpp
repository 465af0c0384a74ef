#include "platform/tool.h"

#include "folder.h"

namespace
{

class ToolTest : public FolderTest
{
  protected:
    void TearDown() override
    {
        environ = inherited;
        FolderTest::TearDown();
    }

    // For the tools that the test starts.
    static void set_environment(const vector<const char*>& variables)
    {
        static vector<char*> pointers;
        pointers.clear();
        for (const char* variable : variables)
            pointers.push_back(const_cast<char*>(variable));
        pointers.push_back(nullptr);
        environ = pointers.data();
    }

    static string output_of(const char* name, const char* argument = nullptr, const char* input = nullptr)
    {
        Tool tool;
        EXPECT_TRUE(start_tool(name, argument, input, tool));
        string output;
        for (char piece[1000]; read_piece(tool.output, piece);)
            output += piece;
        finish_tool(tool);
        return output;
    }

  private:
    char** inherited = environ;
};

TEST_F(ToolTest, GetsItsArgumentAndInputAsTheyAre)
{
    write_file("tool", "#!/bin/sh\nprintf '%s;' $# \"$@\"\ncat\n", 0755);
    EXPECT_EQ(output_of("./tool", "-n $(id) 'a\" *", "%s\\n\n\xFF"), "1;-n $(id) 'a\" *;%s\\n\n\xFF");
    EXPECT_EQ(output_of("./tool", nullptr, ""), "0;");
}

TEST_F(ToolTest, InheritsTheEnvironmentButNotTheLocale)
{
    set_environment({"LANG=de", "A=1", "LANGUAGE=de", "LC_ALL=de", "LC_X=de", "LANGUAGES=2", "LCD=3"});
    EXPECT_EQ(output_of("/usr/bin/env"), "LANG=C\nA=1\nLANGUAGES=2\nLCD=3\n");
}

TEST_F(ToolTest, GetsTheFirst500Variables)
{
    set_environment(vector<const char*>(600, "A=1"));
    EXPECT_EQ(output_of("/usr/bin/env"), "LANG=C\n" + times(500, "A=1\n"));
}

TEST_F(ToolTest, IsTheFirstExecutableFileOfItsNameInPath)
{
    for (const char* name : {"one", "two", "three"})
        std::filesystem::create_directory(name);
    write_file("one/tool", "#!/bin/sh\necho one\n");
    write_file("two/tool", "#!/bin/sh\necho two\n", 0755);
    write_file("three/tool", "#!/bin/sh\necho three\n", 0755);
    set_environment({"PATH=missing:one:two:three"});
    EXPECT_EQ(output_of("tool"), "two\n");
}

TEST_F(ToolTest, IsFoundHereByAnEmptyElementOfPath)
{
    write_file("tool", "#!/bin/sh\necho here\n", 0755);
    set_environment({"PATH=/missing:"});
    EXPECT_EQ(output_of("tool"), "here\n");
}

TEST_F(ToolTest, MayBeAScriptThatNamesNoInterpreter)
{
    write_file("tool", "echo \"$0 $#: $1\"\n", 0755);
    EXPECT_EQ(output_of("./tool", "a b"), "./tool 1: a b\n");
}

TEST_F(ToolTest, ThatDoesNotExistHasNoOutput)
{
    EXPECT_EQ(output_of("./tool"), "");
    EXPECT_EQ(output_of("no-such-tool-anywhere"), "");
}

TEST_F(ToolTest, LeavesNoDescriptorOpen)
{
    const int before = dup(STDIN_FILENO);
    close(before);
    output_of("./tool", nullptr, "input");
    const int after = dup(STDIN_FILENO);
    close(after);
    EXPECT_EQ(after, before);
}

} // namespace
