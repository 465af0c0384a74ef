// The result of a run, one byte: the IPv4 outcome in bits 0 to 3, the IPv6 outcome in bits 4 to 7.
#pragma once

#include <cstdint>

#include "address_family.h"

using ResultCode = std::uint8_t;

// What became of one family: the value of its nibble.
enum FamilyOutcome : int {
    NOT_TESTED = 0,
    WORKS = 1,
    NO_ADDRESS = 4,
    NO_GATEWAY = 5,
    NO_NAME_SERVER = 6,
    INTERFACE_READY = 7, // from the interface examination only, never in a result
    DNS_QUERY_FAILED = 8,
    CONNECTION_FAILED = 9,
    DOCUMENT_MISMATCH = 10,
    FRESH_PROBE = 14, // in the result file only: a full probe succeeded in this run
    NO_USABLE_NAME_SERVER = 15,
};

// Values of the whole byte.
inline constexpr ResultCode EXAMINATION_IMPOSSIBLE = 1; // from the interface examination only, never in a result
inline constexpr ResultCode NO_INTERFACE_HAS_ADDRESS = 2;
inline constexpr ResultCode INTERFACE_MISSING = 3;

constexpr int nibble_shift(AddressFamily family)
{
    return family == AddressFamily::IPV4 ? 0 : 4;
}

// The family's outcome in a code; bits above the byte are ignored.
constexpr FamilyOutcome family_outcome(AddressFamily family, int code)
{
    return static_cast<FamilyOutcome>((code >> nibble_shift(family)) & 0x0F);
}

// The code that holds one family's outcome and nothing of the other.
constexpr ResultCode family_code(AddressFamily family, FamilyOutcome outcome)
{
    return static_cast<ResultCode>(outcome << nibble_shift(family));
}

// The code with one family's outcome replaced. The other nibble stays; bits above the byte are dropped.
constexpr ResultCode with_family_outcome(AddressFamily family, int code, FamilyOutcome outcome)
{
    const int other_nibble = family == AddressFamily::IPV4 ? 0xF0 : 0x0F;
    return static_cast<ResultCode>((code & other_nibble) | family_code(family, outcome));
}
