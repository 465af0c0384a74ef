// One case, one line: a name, what goes in, what must come out.
#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <vector>

#include "ip_address.h"
#include "support.h"

using std::string;
using std::vector;
using namespace std::string_literals;

struct Case {
    const char* name; // says why the case is here
    string in;
    string out;
    int line = __builtin_LINE();
};

// CASES(SplitProbeUrl, split, URLS) makes a test of each row, SplitProbeUrl.Case/NAME.
#define CASES(suite, give, rows)                                                                                       \
    using suite = testing::TestWithParam<Case>;                                                                        \
    TEST_P(suite, Case)                                                                                                \
    {                                                                                                                  \
        const testing::ScopedTrace row(__FILE__, GetParam().line, GetParam().name);                                    \
        EXPECT_EQ(give(GetParam().in), GetParam().out);                                                                \
    }                                                                                                                  \
    INSTANTIATE_TEST_SUITE_P(, suite, testing::ValuesIn(rows), [](const auto& row) { return row.param.name; })

inline string times(std::size_t count, const string& text)
{
    string repeated;
    while (count-- > 0)
        repeated += text;
    return repeated;
}

inline string address_text(const IpAddress& address)
{
    char text[INET6_ADDRSTRLEN];
    return inet_ntop(socket_family(address.family), address.bytes, text, sizeof text);
}
