// The DNS message format (RFC 1035, 4.1), as far as one question and its answer need it: bytes only.
#pragma once

#include <cstddef>
#include <cstdint>

#include "ip_address.h"

inline constexpr std::size_t DNS_MESSAGE_SIZE = 65536;                        // takes any UDP datagram whole
inline constexpr std::size_t DNS_ENCODED_NAME_SIZE = 128;                     // no encoded host name is longer
inline constexpr std::size_t DNS_QUERY_SIZE = 12 + DNS_ENCODED_NAME_SIZE + 4; // no query is longer

// Writes the host name as a label sequence (RFC 1035, 3.1), followed by a zero octet. Of a host name of more than 126
// characters, only the labels that end within its first 127 characters are written. `target` has
// DNS_ENCODED_NAME_SIZE bytes. Returns how many octets were written. An empty label is a zero octet, which ends the
// name for every reader.
std::size_t dns_encode_name(unsigned char* target, const char* host);

// Returns how many octets the encoded name at `position` of a received message of `size` octets occupies there, or 0 if
// it runs past the end of the message. A compression pointer (RFC 1035, 4.1.4) ends the name; it is not followed.
std::size_t dns_skip_name(const unsigned char* message, std::size_t size, std::size_t position);

// Writes a recursive query for the host's address record of the family, A (RFC 1035) or AAAA (RFC 3596). `message`
// has DNS_QUERY_SIZE bytes. Returns the length of the query in octets.
std::size_t dns_build_query(unsigned char* message, std::uint16_t id, const char* host, AddressFamily family);

// Finds the first answer record of the family's type whose data are long enough for an address, in a received message
// of `size` octets. Of the rest of the message only the count of answers is believed. The first 20 answer records are
// read, up to one that runs past the end of the message. Returns false, with `address` untouched, if none of them fits.
bool dns_find_address(const unsigned char* message, std::size_t size, AddressFamily family, IpAddress& address);
