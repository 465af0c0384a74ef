// The optional configuration file, which names a fallback probe document.
#pragma once

#include <cstddef>

#include "platform/text_file.h"

inline constexpr char CONFIG_FILE_PATH[] = "/etc/tolvane.cfg";
inline constexpr std::size_t CONFIG_LINE_SIZE = 1024;                  // lines of at most 1023 characters
inline constexpr std::size_t CHECKSERVER_SIZE = CONFIG_LINE_SIZE - 12; // behind "checkserver="
inline constexpr std::size_t XMLURI_SIZE = CONFIG_LINE_SIZE - 7;       // behind "xmluri="

// Empty texts where the file gives no value.
struct ProbeConfig {
    char checkserver[CHECKSERVER_SIZE]; // takes part only in ending the reading
    char xmluri[XMLURI_SIZE];           // the document URL, with the line feed that ended its line
};

// Reads lines "checkserver=VALUE" and "xmluri=VALUE"; a value ends before a carriage return or a 0x0F byte, and a later
// one replaces it. The first line at which both values are non-empty is the last one read.
ProbeConfig parse_probe_config(TextReader& reader);

// The values of the configuration file; empty when it cannot be read.
ProbeConfig read_probe_config();

// True when the path of the configuration file exists, whatever it is.
bool probe_config_present();
