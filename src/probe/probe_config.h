// The optional configuration file, which names a fallback probe document.
#pragma once

#include <cstddef>

#include "platform/text_io.h"

inline constexpr std::size_t CONFIG_LINE_SIZE = 1024;                  // lines of at most 1023 characters
inline constexpr std::size_t CHECKSERVER_SIZE = CONFIG_LINE_SIZE - 12; // the rest of a line after "checkserver="
inline constexpr std::size_t XMLURI_SIZE = CONFIG_LINE_SIZE - 7;       // the rest of a line after "xmluri="

// A text is empty if the file has no value for it.
struct ProbeConfig {
    char checkserver[CHECKSERVER_SIZE]; // takes part only in ending the reading
    char xmluri[XMLURI_SIZE];           // the document URL; it may end with the line feed of its line
};

// Reads lines "checkserver=VALUE" and "xmluri=VALUE". A value ends before a carriage return or a 0x0F byte; a line feed
// is part of it. A later value replaces an earlier one. The first line after which both values are non-empty is the
// last one read.
ProbeConfig parse_probe_config(TextReader& reader);

// Reads the configuration file. The values are empty if it is not a readable regular file.
ProbeConfig read_probe_config();

// Returns true if the path of the configuration file exists, whatever it is.
bool probe_config_present();
