// One case, one line: a name, what goes in, what must come out. A failure points at that line.
#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <vector>

#include "ip_address.h"
#include "support.h"

using std::string;
using std::vector;
using namespace std::string_literals;

template <typename Input> struct CaseOf {
    const char* name; // says why the case is here
    Input in;
    string out;
    int line = __builtin_LINE();
};

using Case = CaseOf<string>;

// CASES(SplitProbeUrl, split, URLS) makes a test of each row, SplitProbeUrl.NAME.
#define CASES(suite, give, rows) static const bool suite##_added = add_cases(#suite, give, rows, __FILE__)

template <typename Body> struct CaseTest : testing::Test, Body {
    explicit CaseTest(const Body& body) : Body(body)
    {
    }

    void TestBody() override
    {
        (*this)();
    }
};

template <typename Function, typename Rows>
bool add_cases(const char* suite, Function give, const Rows& rows, const char* file)
{
    for (const auto& row : rows) {
        const auto body = [&row, give, file] {
            const string given = give(row.in);
            if (given != row.out)
                ADD_FAILURE_AT(file, row.line) << row.name << " gives " << testing::PrintToString(given);
        };
        testing::RegisterTest(suite, row.name, nullptr, nullptr, file, row.line,
                              [body] { return new CaseTest<decltype(body)>(body); });
    }
    return true;
}

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
