// What a terminal run leaves for the next one: its result, and when a full server probe last succeeded.
#pragma once

#include <cstdint>

#include "platform/text_io.h"
#include "result_code.h"

inline constexpr ResultCode RESULT_FILE_ABSENT = 255;
inline constexpr ResultCode RESULT_FILE_STALE = 254;

// The file holds two decimal lines: the result code, with the marker FRESH_PROBE in the nibble of each family whose
// full probe succeeded in that run, and the time of the last such success (seconds since 1970). A run passes on the
// time that it read if none of its own full probes succeeds. The time is 0 if there was none to pass on, or only a
// stale one.

// Reads the code from the file's text and, if it holds a success of a family, the time stamp. Returns the code with the
// markers turned back into WORKS; RESULT_FILE_STALE if the stamp is after `now` or 86400 seconds or more before it;
// RESULT_FILE_ABSENT if the text is empty. `stamp` is the time of a success that is not stale, otherwise 0.
// A stored RESULT_FILE_STALE (14 + 240) is returned as it is, with its stamp.
ResultCode parse_result(TextReader& reader, std::int64_t now, std::int64_t& stamp);

// Reads the file as parse_result does, and deletes it. Returns RESULT_FILE_ABSENT, and deletes nothing, if there is no
// readable regular file.
ResultCode read_result_file(std::int64_t& stamp);

// Writes the code and the time: the current time if the code holds a marker, otherwise `stamp`. A regular file that is
// there is replaced, never written to; anything else there is left alone. A file that cannot be written whole is
// deleted. Nothing is reported.
void write_result_file(ResultCode code, std::int64_t stamp);

// Deletes the file. A missing file is no error.
void delete_result_file();

// Returns the code with each family's FRESH_PROBE replaced by WORKS.
ResultCode without_markers(int code);
