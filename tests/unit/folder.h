// A test that works in an empty folder of its own.
#pragma once

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "cases.h"

struct FolderTest : testing::Test {
    char folder[20] = "/tmp/tolvane-XXXXXX";

    void SetUp() override
    {
        std::filesystem::current_path(mkdtemp(folder));
    }

    void TearDown() override
    {
        std::filesystem::current_path("/");
        std::filesystem::remove_all(folder);
    }

    static void write_file(const char* path, const string& text, mode_t mode = 0644)
    {
        std::ofstream(path) << text;
        chmod(path, mode);
    }
};
