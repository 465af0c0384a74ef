#include "dns/dns_message.h"

#include "cases.h"

namespace
{

template <AddressFamily FAMILY> string query_for(const string& host)
{
    unsigned char octets[DNS_QUERY_SIZE];
    return {octets, octets + dns_build_query(octets, 0xABCD, host.c_str(), FAMILY)};
}

string question_for(const string& host)
{
    return query_for<IPV4>(host).substr(12);
}

const Case HOSTS[] = {
    {"two_labels", "v.example", "\1v\7example\0\0\1\0\1"s},
    {"longest_host", times(126, "a"), "\x7E" + times(126, "a") + "\0\0\1\0\1"s},
    {"too_long_label", times(127, "a"), "\0\0\1\0\1"s},
    {"too_long_host_loses_its_last_label", "a." + times(125, "b"), "\1a\0\0\1\0\1"s},
    {"empty_label_ends_the_name", "a..b", "\1a\0\0\1\0\1"s},
};

CASES(DnsQuestion, question_for, HOSTS);

TEST(DnsQuery, ForAnIpv6AddressWantsRecursion)
{
    EXPECT_EQ(query_for<IPV6>("v"), "\xAB\xCD\1\0\0\1\0\0\0\0\0\0\1v\0\0\x1C\0\1"s);
}

// How many octets the name after the first octet occupies.
string name_length(const string& message)
{
    const vector<unsigned char> octets(message.begin(), message.end());
    return std::to_string(dns_skip_name(octets.data(), octets.size(), 1));
}

const Case NAMES[] = {
    {"ends_after_its_root", "?\1v\7example\0?"s, "11"},
    {"is_only_the_root", "?\0"s, "1"},
    {"ends_after_a_pointer", "?\1v\xC0\0?"s, "4"},
    {"has_its_longest_label", "?\xBF" + times(191, "a") + "\0"s, "193"},
    {"is_missing", "?", "0"},
    {"ends_in_a_cut_pointer", "?\1v\xC0", "0"},
    {"ends_in_a_cut_label", "?\5v", "0"},
};

CASES(DnsName, name_length, NAMES);

constexpr unsigned A = 1, CNAME = 5, AAAA = 28;
const string GOOD = "\1\2\3\4"s, OTHER = "\5\6\7\x08"s;
const string POINTER = "\xC0\x0C"s;

string number(std::size_t value)
{
    return {static_cast<char>(value >> 8), static_cast<char>(value & 0xFF)};
}

// `length` is what the record claims; a lie where it is not that of the data.
string record(unsigned type, const string& data, std::size_t length)
{
    return POINTER + number(type) + "\0\1\0\0\0\1"s + number(length) + data;
}

string record(unsigned type, const string& data)
{
    return record(type, data, data.size());
}

string response(std::size_t count, const string& records)
{
    return "??\x81\x83\0\1"s + number(count) + "\0\0\0\0\1v\7example\0\0\1\0\1"s + records;
}

template <AddressFamily FAMILY> string address_in(const string& message)
{
    const vector<unsigned char> octets(message.begin(), message.end());
    IpAddress address;
    return dns_find_address(octets.data(), octets.size(), FAMILY, address) ? address_text(address) : "none";
}

const Case IPV4_ANSWERS[] = {
    {"takes_the_first_of_two", response(2, record(A, GOOD) + record(A, OTHER)), "1.2.3.4"},
    {"passes_over_an_alias", response(2, record(CNAME, "\5alias" + POINTER) + record(A, GOOD)), "1.2.3.4"},
    {"passes_over_the_other_family", response(2, record(AAAA, times(16, "6")) + record(A, GOOD)), "1.2.3.4"},
    {"takes_the_start_of_longer_data", response(1, record(A, GOOD + "more")), "1.2.3.4"},
    {"passes_over_shorter_data", response(2, record(A, "\1\2\3") + record(A, GOOD)), "1.2.3.4"},
    {"reads_the_high_byte_of_the_count", response(256, record(A, GOOD)), "1.2.3.4"},
    {"reads_the_high_byte_of_the_type", response(2, record(257, "\5alias\0"s) + record(A, GOOD)), "1.2.3.4"},
    {"reads_the_high_byte_of_the_length", response(1, record(A, GOOD + times(252, "x"))), "1.2.3.4"},
    {"believes_the_count_of_none", response(0, record(A, GOOD)), "none"},
    {"survives_a_count_too_high", response(99, record(CNAME, POINTER)), "none"},
    {"stops_at_data_beyond_the_end", response(1, record(A, GOOD, 5)), "none"},
    {"stops_at_a_cut_pointer", response(9, record(CNAME, "\xC0")), "none"},
    {"reads_the_20th_record", response(20, times(19, record(CNAME, POINTER)) + record(A, GOOD)), "1.2.3.4"},
    {"stops_before_the_21st_record", response(21, times(20, record(CNAME, POINTER)) + record(A, GOOD)), "none"},
    {"survives_a_cut_header", response(1, "").substr(0, 11), "none"},
    {"survives_a_cut_question", response(1, "").substr(0, 16), "none"},
};

const Case IPV6_ANSWERS[] = {
    {"passes_over_the_other_family", response(2, record(A, GOOD) + record(AAAA, times(15, "\0"s) + "\1")), "::1"},
    {"passes_over_shorter_data", response(1, record(AAAA, times(15, "A"))), "none"},
};

CASES(DnsAnswerA, address_in<IPV4>, IPV4_ANSWERS);
CASES(DnsAnswerAaaa, address_in<IPV6>, IPV6_ANSWERS);

} // namespace
