#include "probe/probe_config.h"

#include "cases.h"

// "CHECKSERVER,XMLURI" of a configuration file.
static string values(const string& text)
{
    const ProbeConfig config = parse_probe_config(reader_of(text));
    return config.checkserver + ","s + config.xmluri;
}

const Case FILES[] = {
    {"carriage_return", "checkserver=c\r\nxmluri=u\r\n", "c,u"},
    {"line_feed", "xmluri= u \n", ", u \n"},
    {"shift_in", "xmluri=u\x0Fx\n", ",u"},
    {"key_within_a_line", " xmluri=u\n#xmluri=u\n", ","},
    {"later_empty_value", "xmluri=u\r\nxmluri=\r\n", ","},
    {"end_after_both_values", "xmluri=1\r\nxmluri=2\r\ncheckserver=c\r\nxmluri=3\r\n", "c,2"},
    {"line_of_1023_characters", "xmluri=" + times(1016, "u") + "checkserver=c", "c," + times(1016, "u")},
};

CASES(ParseProbeConfig, values, FILES);
