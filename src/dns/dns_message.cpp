#include "dns/dns_message.h"

#include <cstdio>
#include <cstring>

namespace
{

constexpr std::size_t HEADER_SIZE = 12;
constexpr std::size_t ANSWER_COUNT_OFFSET = 6;
constexpr std::size_t QUESTION_TAIL_SIZE = 4; // QTYPE and QCLASS
constexpr std::size_t CLASS_AND_TTL_SIZE = 6;
constexpr unsigned MAX_ANSWERS = 20;

constexpr std::uint16_t TYPE_A = 1;
constexpr std::uint16_t TYPE_AAAA = 28;
constexpr std::uint16_t CLASS_IN = 1;

constexpr std::size_t HOST_TEXT_SIZE = 128; // a host name of 126 characters, the dot after it and the zero

// A position in a received message. No read goes past the end.
struct Cursor {
    const unsigned char* message;
    std::size_t size;
    std::size_t position;
};

bool skip_octets(Cursor& cursor, std::size_t count)
{
    if (cursor.size - cursor.position < count)
        return false;
    cursor.position += count;
    return true;
}

bool read_number(Cursor& cursor, std::uint16_t& number)
{
    const unsigned char* octets = cursor.message + cursor.position;
    if (!skip_octets(cursor, 2))
        return false;
    number = static_cast<std::uint16_t>(octets[0] << 8 | octets[1]);
    return true;
}

bool skip_name(Cursor& cursor)
{
    const std::size_t length = dns_skip_name(cursor.message, cursor.size, cursor.position);
    cursor.position += length;
    return length > 0;
}

// The question name is taken to end at its first zero octet, as it was sent.
bool skip_question(Cursor& cursor)
{
    if (!skip_octets(cursor, HEADER_SIZE))
        return false;
    const void* end = std::memchr(cursor.message + HEADER_SIZE, 0, cursor.size - HEADER_SIZE);
    if (end == nullptr)
        return false;
    cursor.position = static_cast<std::size_t>(static_cast<const unsigned char*>(end) - cursor.message) + 1;
    return skip_octets(cursor, QUESTION_TAIL_SIZE);
}

constexpr std::uint16_t record_type(AddressFamily family)
{
    return family == AddressFamily::IPV4 ? TYPE_A : TYPE_AAAA;
}

struct AnswerRecord {
    std::uint16_t type;
    std::uint16_t data_length;
    const unsigned char* data; // set only for an address record
};

// Reads one record. The data of every record but an address record are taken to be a name, like those of a CNAME
// record.
bool read_answer(Cursor& cursor, AnswerRecord& record)
{
    if (!skip_name(cursor) || !read_number(cursor, record.type) || !skip_octets(cursor, CLASS_AND_TTL_SIZE) ||
        !read_number(cursor, record.data_length))
        return false;
    if (record.type != TYPE_A && record.type != TYPE_AAAA)
        return skip_name(cursor);
    record.data = cursor.message + cursor.position;
    return skip_octets(cursor, record.data_length);
}

unsigned char* put_number(unsigned char* target, std::uint16_t number)
{
    *target++ = static_cast<unsigned char>(number >> 8);
    *target++ = static_cast<unsigned char>(number & 0xFF);
    return target;
}

} // namespace

std::size_t dns_encode_name(unsigned char* target, const char* host)
{
    char text[HOST_TEXT_SIZE];
    std::snprintf(text, sizeof text, "%s.", host);
    const std::size_t length = std::strlen(text);

    std::size_t written = 0;
    std::size_t label_start = 0;
    for (std::size_t i = 0; i < length; ++i) {
        if (text[i] != '.')
            continue;
        const std::size_t label_length = i - label_start;
        target[written++] = static_cast<unsigned char>(label_length);
        std::memcpy(target + written, text + label_start, label_length);
        written += label_length;
        label_start = i + 1;
    }
    target[written++] = 0;
    return written;
}

std::size_t dns_skip_name(const unsigned char* message, std::size_t size, std::size_t position)
{
    constexpr unsigned char POINTER = 0xC0;
    Cursor cursor = {message, size, position};
    for (;;) {
        if (cursor.position >= size)
            return 0;
        const unsigned char length = message[cursor.position];
        const std::size_t occupied = length >= POINTER ? 2U : 1U + length;
        if (!skip_octets(cursor, occupied))
            return 0;
        if (length == 0 || length >= POINTER)
            return cursor.position - position;
    }
}

std::size_t dns_build_query(unsigned char* message, std::uint16_t id, const char* host, AddressFamily family)
{
    constexpr std::uint16_t RECURSION_DESIRED = 0x0100;
    unsigned char* next = put_number(message, id);
    next = put_number(next, RECURSION_DESIRED);
    next = put_number(next, 1); // question count
    next = put_number(next, 0); // answer count
    next = put_number(next, 0); // authority count
    next = put_number(next, 0); // additional count

    dns_encode_name(next, host);
    // The name ends at its first zero octet. What follows an empty label in the middle is not sent.
    while (*next++ != 0) {}
    next = put_number(next, record_type(family));
    next = put_number(next, CLASS_IN);
    return static_cast<std::size_t>(next - message);
}

bool dns_find_address(const unsigned char* message, std::size_t size, AddressFamily family, IpAddress& address)
{
    Cursor cursor = {message, size, ANSWER_COUNT_OFFSET};
    std::uint16_t answers;
    if (size < HEADER_SIZE || !read_number(cursor, answers))
        return false;
    cursor.position = 0;
    if (!skip_question(cursor))
        return false;

    AnswerRecord record;
    for (unsigned i = 0; i < answers && i < MAX_ANSWERS && read_answer(cursor, record); ++i) {
        if (record.type == record_type(family) && record.data_length >= address_size(family)) {
            address = {family, {}};
            std::memcpy(address.bytes, record.data, address_size(family));
            return true;
        }
    }
    return false;
}
