#include "probe/probe_url.h"

#include "cases.h"

// "HOST PORT PATH" of a URL.
static string split(const string& text)
{
    ProbeUrl url;
    return split_probe_url(text.c_str(), url) ? url.host + " "s + std::to_string(url.port) + " " + url.path : "refused";
}

const Case URLS[] = {
    {"host_port_and_path", "http://a:8080/c/d", "a 8080 /c/d"},
    {"white_space_around_it", "http:// \t\r\n\v\fa/x\n", "a 80 /x"},
    {"colon_in_the_path", "http://a/x:1", "a 80 /x:1"},
    {"port_0_modulo_65536", "http://a:65536", "a 80 /"},
    {"longest_host", "http://" + times(1016, "h"), times(1016, "h") + " 80 /"},
    {"nothing_after_the_scheme", "http://", "refused"},
};

CASES(SplitProbeUrl, split, URLS);
