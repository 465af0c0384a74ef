#include "cli/result_file.h"

#include "cases.h"

namespace
{

// "CODE STAMP" of a file that is read at the second 100000.
string code_and_stamp(const string& text)
{
    std::int64_t stamp = 7;
    const int code = parse_result(reader_of(text), 100000, stamp);
    return std::to_string(code) + " " + std::to_string(stamp);
}

const Case FILES[] = {
    {"empty", "", "255 0"},
    {"last_fresh_second", "17\n13601\n", "17 13601"},
    {"first_stale_second", "17\n13600\n", "254 0"},
    {"of_this_second", "1\n100000\n", "1 100000"},
    {"of_the_future", "1\n100001\n", "254 0"},
    {"fresh_probes_become_successes", "238\n99999\n", "17 99999"},
    {"one_success_is_enough", "25\n99999\n", "25 99999"},
    {"failure_has_no_stamp", "144\n99999\n", "144 0"},
    {"stored_code_of_stale_is_kept", "254\n99999\n", "254 99999"},
    {"success_without_stamp", "14\n", "1 0"},
    {"success_with_an_empty_stamp", "1\n\n", "254 0"},
    {"empty_code", "\n99999\n", "0 0"},
    {"numbers_before_and_after_other_text", " +17x\n 99999x", "17 99999"},
    {"hexadecimal_code", "0x11\n99999", "0 0"},
    {"greatest_time", "1\n9223372036854775807", "254 0"},
    {"least_time", "1\n-9223372036854775808", "254 0"},
    {"code_line_of_255_characters", "1" + times(254, " ") + "99999", "1 99999"},
    {"longer_code_line", "1" + times(253, " ") + "99999", "254 0"},
};

CASES(ParseResult, code_and_stamp, FILES);

string code_without_markers(int code)
{
    return std::to_string(without_markers(code));
}

const CaseOf<int> CODES[] = {
    {"both_families", 14 + 16 * 14, "17"},
    {"one_family_and_a_failure", 9 + 16 * 14, "25"},
    {"neither_family", 9, "9"},
};

CASES(WithoutMarkers, code_without_markers, CODES);

} // namespace
