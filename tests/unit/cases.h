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
    string name; // says why the case is here: letters, digits and underscores
    Input in;
    string out;
    int line = __builtin_LINE();
};

using Case = CaseOf<string>;

template <typename Input> void PrintTo(const CaseOf<Input>& row, std::ostream* stream)
{
    *stream << row.name;
}

template <typename Input> string name_of(const testing::TestParamInfo<CaseOf<Input>>& info)
{
    return info.param.name;
}

// CASES(ProbeUrl, split, URLS) makes a test of each row, ProbeUrl.Gives/NAME.
#define CASES(suite, give, rows)                                                                                       \
    using suite = testing::TestWithParam<std::decay_t<decltype(rows[0])>>;                                             \
    TEST_P(suite, Gives)                                                                                               \
    {                                                                                                                  \
        const string given = give(GetParam().in);                                                                      \
        if (given != GetParam().out)                                                                                   \
            ADD_FAILURE_AT(__FILE__, GetParam().line)                                                                  \
                << GetParam().name << "\n  gives " << testing::PrintToString(given) << "\n  not   "                    \
                << testing::PrintToString(GetParam().out);                                                             \
    }                                                                                                                  \
    INSTANTIATE_TEST_SUITE_P(, suite, testing::ValuesIn(rows), name_of<decltype(rows[0].in)>)

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

inline IpAddress address_of(AddressFamily family, const string& text)
{
    IpAddress address = {family, {}};
    EXPECT_EQ(inet_pton(socket_family(family), text.c_str(), address.bytes), 1);
    return address;
}
