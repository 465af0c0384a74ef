// What a terminal run leaves for the next one: its result, and when a full server probe last succeeded.
#pragma once

#include <cstdint>

#include "platform/text_file.h"

inline constexpr char RESULT_FILE_PATH[] = "/tmp/tolvaneresult";
inline constexpr int RESULT_FILE_ABSENT = 255;
inline constexpr int RESULT_FILE_STALE = 254;

// The file holds two decimal lines: the result code, with the marker FRESH_PROBE in the nibble of each family whose
// full probe succeeded in that run, and the time of the last such success (seconds since 1970, 0 when there was none).

// Reads the code and, when it holds a success of a family, the time stamp from the file's text. Returns the code with
// the markers turned back into WORKS; RESULT_FILE_STALE when the success lies in the future or 86400 seconds or more
// before `now`; RESULT_FILE_ABSENT for an empty text. `stamp` is the time of a success that is not stale, 0 otherwise.
// A stored RESULT_FILE_STALE (14 + 240) comes back as it is, with its stamp.
int parse_result(TextReader& reader, std::int64_t now, std::int64_t& stamp);

// Reads the file as parse_result does, and deletes it. Returns RESULT_FILE_ABSENT, and deletes nothing, when there is
// no regular file that can be opened.
int read_result_file(std::int64_t& stamp);

// Writes the code and the time: the current one when the code holds a marker, otherwise `stamp`. A file that cannot be
// opened is left alone, one that cannot be written whole is left empty. A symbolic link is not followed.
void write_result_file(int code, std::int64_t stamp);

// A missing file is no error.
void delete_result_file();

// The code with each family's FRESH_PROBE replaced by WORKS.
int without_markers(int code);
