// A document URL split into what a request needs.
#pragma once

#include <cstddef>
#include <cstdint>

#include "probe/probe_config.h"

inline constexpr std::size_t URL_WORD_SIZE = XMLURI_SIZE; // no URL is longer than that of the configuration file

inline constexpr std::uint16_t HTTP_PORT = 80;

struct ProbeUrl {
    char host[URL_WORD_SIZE]; // may be empty; holds neither '/' nor ':'
    char path[URL_WORD_SIZE]; // begins with '/'
    std::uint16_t port;       // named only in the request; the connection goes to port 80
};

// Splits "http://" HOST [":" PORT] [PATH], up to the first white space. White space directly after "http://" is
// skipped. What follows the scheme is cut to URL_WORD_SIZE - 1 characters. A port of 0 modulo 65536 becomes 80, and a
// missing path "/". Returns false, with `parts` undefined, if the URL does not begin with "http://" or is nothing else.
bool split_probe_url(const char* url, ProbeUrl& parts);
