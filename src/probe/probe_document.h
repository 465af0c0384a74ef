// Whether received bytes carry the probe document with the right checksum.
#pragma once

#include <cstddef>

#include "platform/text_io.h"

inline constexpr std::size_t PROBE_CHUNK_LENGTH = 1023; // bytes of one read
inline constexpr std::size_t DIGEST_FIELD_SIZE = 40;
inline constexpr std::size_t DATE_SIZE = 21; // dates of at most 20 characters
// Texts of at most 33 characters, one more than a digest has, so that a longer checksum never matches.
inline constexpr std::size_t CHECKSUM_SIZE = 34;

struct ProbeDocument {
    char date[DATE_SIZE];
    char checksum[CHECKSUM_SIZE];
};

// Finds the declaration, the date and the checksum in a chunk, a text. Returns false if one of them is missing or
// empty.
bool find_probe_document(const char* chunk, ProbeDocument& document);

// Takes the digest from the output of md5sum: the first 32 characters of the last line that has so many. If no line
// has, `digest`, a field of zeros, stays empty.
void take_digest(TextReader& output, char (&digest)[DIGEST_FIELD_SIZE]);

// Returns true if the chunk, a text of at most PROBE_CHUNK_LENGTH bytes, carries the document with the digest of its
// date.
bool verify_probe_chunk(const char* chunk);
