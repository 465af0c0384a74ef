// The result of a run, one byte: the IPv4 outcome in bits 0 to 3, the IPv6 outcome in bits 4 to 7.
#pragma once

#include "address_family.h"

// What became of one family, as it stands in that family's nibble.
enum FamilyOutcome : int {
    NOT_TESTED = 0,
    WORKS = 1,
    NO_ADDRESS = 4,
    NO_GATEWAY = 5,
    NO_DNS_SERVER = 6,
    INTERFACE_READY = 7, // from the interface examination only, never in a result
    DNS_QUERY_FAILED = 8,
    CONNECTION_FAILED = 9,
    DOCUMENT_MISMATCH = 10,
    FRESH_PROBE = 14, // in the result file only: a full probe succeeded in this run
    NO_NAME_SERVER = 15,
};

// Values of the whole byte.
inline constexpr int EXAMINATION_IMPOSSIBLE = 1; // from the interface examination only, never in a result
inline constexpr int NO_INTERFACE_HAS_ADDRESS = 2;
inline constexpr int INTERFACE_MISSING = 3;

constexpr int nibble_shift(AddressFamily family)
{
    return family == AddressFamily::IPV4 ? 0 : 4;
}

constexpr int family_nibble(AddressFamily family, int code)
{
    return (code >> nibble_shift(family)) & 0x0F;
}

// The code of one family's outcome alone.
constexpr int family_code(AddressFamily family, int outcome)
{
    return outcome << nibble_shift(family);
}

// The code with one family's nibble replaced; the other nibble stays, what lies above the byte goes.
constexpr int with_family_nibble(AddressFamily family, int code, int outcome)
{
    const int other_nibble = family == AddressFamily::IPV4 ? 0xF0 : 0x0F;
    return (code & other_nibble) + family_code(family, outcome);
}
