#include "probe/probe_config.h"

#include "cases.h"

namespace
{

// "[CHECKSERVER][XMLURI]" of a configuration file.
string values(const string& text)
{
    const ProbeConfig config = parse_probe_config(reader_of(text));
    return "["s + config.checkserver + "][" + config.xmluri + "]";
}

const Case FILES[] = {
    {"empty", "", "[][]"},
    {"ends_a_value_before_a_carriage_return", "# x\r\ncheckserver=c\r\nxmluri=u\r\n", "[c][u]"},
    {"ends_a_value_before_shift_in", "xmluri=u\x0Fx\n", "[][u]"},
    {"takes_the_line_feed_and_blanks", "xmluri= u \n", "[][ u \n]"},
    {"wants_the_key_at_the_start_of_a_line", " xmluri=u\n#xmluri=u\n", "[][]"},
    {"wants_the_key_in_lower_case", "XMLURI=u\n", "[][]"},
    {"wants_the_equals_sign_after_the_key", "xmluri =u\nxmluriu\n", "[][]"},
    {"replaces_a_longer_value", "xmluri=longer\r\nxmluri=u\r\n", "[][u]"},
    {"replaces_a_value_by_none", "xmluri=u\r\nxmluri=\r\n", "[][]"},
    {"stops_when_both_have_a_value", "xmluri=1\r\nxmluri=2\r\ncheckserver=c\r\nxmluri=3\r\n", "[c][2]"},
    {"goes_on_while_the_server_is_missing", "xmluri=u\r\ncheckserver=\r\ncheckserver=c\r\n", "[c][u]"},
    {"goes_on_while_the_uri_is_missing", "checkserver=c\r\nxmluri=\r\nxmluri=u\r\n", "[c][u]"},
    {"cuts_lines_at_1023_characters", "xmluri=" + times(1016, "u") + "checkserver=c", "[c][" + times(1016, "u") + "]"},
    {"keeps_lines_of_1023_characters", times(1022, "x") + "xmluri=u", "[][]"},
    {"keeps_the_longest_server", "checkserver=" + times(1011, "c"), "[" + times(1011, "c") + "][]"},
};

CASES(ParseProbeConfig, values, FILES);

} // namespace
