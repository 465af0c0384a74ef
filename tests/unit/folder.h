// Tests that work in an empty folder of their own.
#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "cases.h"

class FolderTest : public testing::Test
{
  protected:
    void SetUp() override
    {
        char path[] = "/tmp/tolvane-XXXXXX";
        folder = mkdtemp(path);
        std::filesystem::current_path(folder);
    }

    void TearDown() override
    {
        std::filesystem::current_path("/");
        std::filesystem::remove_all(folder);
    }

    static void write_file(const string& path, const string& text, mode_t mode = 0644)
    {
        std::ofstream(path) << text;
        chmod(path.c_str(), mode);
    }

  private:
    string folder;
};
