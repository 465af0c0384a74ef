// The DNS message format (RFC 1035, 4.1), as far as one question and its answer need it: bytes only.
#pragma once

#include <cstddef>
#include <cstdint>

#include "address_family.h"

inline constexpr std::size_t DNS_MESSAGE_SIZE = 65536;                        // takes any UDP datagram whole
inline constexpr std::size_t DNS_ENCODED_NAME_SIZE = 128;                     // no encoded host name is longer
inline constexpr std::size_t DNS_QUERY_SIZE = 12 + DNS_ENCODED_NAME_SIZE + 4; // nor any query

// Writes the host name as a label sequence (RFC 1035, 3.1), followed by a zero octet. Of a host name of more than 126
// characters only the labels that end within its first 127 characters are written. `target` holds
// DNS_ENCODED_NAME_SIZE bytes. Returns how many octets were written; an empty label among them is a zero octet, which
// ends the name where it stands.
std::size_t dns_encode_name(unsigned char* target, const char* host);

// How many octets the encoded name at `position` of a received message of `size` octets occupies there, a compression
// pointer (RFC 1035, 4.1.4) ending it in place; 0 when it runs past the end of the message.
std::size_t dns_skip_name(const unsigned char* message, std::size_t size, std::size_t position);

// Writes a recursive query for the host's address record of the family, A (RFC 1035) or AAAA (RFC 3596). `message`
// holds DNS_QUERY_SIZE bytes. Returns the query's length in octets.
std::size_t dns_build_query(unsigned char* message, std::uint16_t id, const char* host, AddressFamily family);

// Finds the first answer record of the family's type in a received message of `size` octets and stores its address in
// network byte order. Returns false, with `address` untouched, when there is none among the first 20 answer records or
// before a record that runs past the end of the message. Nothing else of the message is looked at.
bool dns_find_address(const unsigned char* message, std::size_t size, AddressFamily family, void* address);
