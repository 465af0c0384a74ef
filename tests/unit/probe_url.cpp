#include "probe/probe_url.h"

#include "cases.h"

namespace
{

// "HOST PORT PATH" of a URL.
string split(const string& text)
{
    ProbeUrl url;
    return split_probe_url(text.c_str(), url) ? url.host + " "s + std::to_string(url.port) + " " + url.path : "refused";
}

const Case URLS[] = {
    {"takes_host_port_and_path", "http://a:8080/c/d", "a 8080 /c/d"},
    {"fills_in_port_and_path", "http://a", "a 80 /"},
    {"ends_at_white_space", "http://a/x y", "a 80 /x"},
    {"passes_over_leading_white_space", "http:// \t\r\n\v\fa/x\n", "a 80 /x"},
    {"keeps_a_colon_in_the_path", "http://a/x:1/y", "a 80 /x:1/y"},
    {"ends_the_host_at_the_first_colon", "http://a:81:82/", "a 81 /"},
    {"reads_the_port_modulo_65536", "http://a:65617", "a 81 /"},
    {"takes_no_port_for_80", "http://a:65536", "a 80 /"},
    {"allows_an_empty_host", "http:///x", " 80 /x"},
    {"keeps_the_longest_host", "http://" + times(1016, "h"), times(1016, "h") + " 80 /"},
    {"keeps_the_longest_path", "http:///" + times(1015, "p"), " 80 /" + times(1015, "p")},
    {"cuts_a_longer_word", "http://a/" + times(1015, "p"), "a 80 /" + times(1014, "p")},
    {"refuses_an_empty_rest", "http://", "refused"},
    {"refuses_another_scheme", "https://a", "refused"},
    {"wants_the_scheme_in_lower_case", "HTTP://a", "refused"},
};

CASES(SplitProbeUrl, split, URLS);

} // namespace
