// Tables of inputs and of the text that each must give.
#pragma once

#include <gtest/gtest.h>

#include <sstream>

#include "support.h"

using std::string;
using namespace std::string_literals;

// Replaces "{N*TEXT}" by TEXT N times.
inline string expanded(string row)
{
    for (std::size_t open; (open = row.find('{')) != string::npos;) {
        const std::size_t close = row.find('}', open);
        const std::size_t text = row.find('*', open) + 1;
        string repeated;
        for (int left = std::stoi(row.substr(open + 1)); left > 0; --left)
            repeated += row.substr(text, close - text);
        row.replace(open, close + 1 - open, repeated);
    }
    return row;
}

// Each row is "INPUT -> EXPECTED"; a " | " stands between two rows.
template <typename Function> void expect_rows(const string& rows, Function give)
{
    for (std::size_t start = 0, end; start <= rows.size(); start = end + 3) {
        end = std::min(rows.find(" | ", start), rows.size());
        const string row = expanded(rows.substr(start, end - start));
        const std::size_t arrow = row.find(" -> ");
        EXPECT_EQ(give(row.substr(0, arrow)), row.substr(arrow + 4)) << testing::PrintToString(row);
    }
}
