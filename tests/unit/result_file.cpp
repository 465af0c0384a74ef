#include "cli/result_file.h"

#include "cases.h"

// "CODE STAMP" of a file that is read at second 100000.
static string code_and_stamp(const string& text)
{
    std::int64_t stamp = 7;
    const int code = parse_result(reader_of(text), 100000, stamp);
    return std::to_string(code) + " " + std::to_string(stamp);
}

const Case FILES[] = {
    {"empty", "", "255 0"},
    {"last_fresh_second", "17\n13601\n", "17 13601"},
    {"first_stale_second", "16\n13600\n", "254 0"},
    {"present_second", "1\n100000\n", "1 100000"},
    {"future_second", "1\n100001\n", "254 0"},
    {"fresh_probe", "233\n99999\n", "25 99999"},
    {"code_of_stale", "254\n99999\n", "254 99999"},
    {"no_stamp", "14\n", "1 0"},
    {"text_around_numbers", " +017x\n 099999x", "17 99999"},
    {"stamp_of_33_bits", "1\n4295067295", "254 0"},
    {"line_of_255_characters", "1" + times(254, " ") + "99999", "1 99999"},
};

CASES(ParseResult, code_and_stamp, FILES);
