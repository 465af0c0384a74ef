#include "dns/dns_message.h"

#include "cases.h"

static string query_for(const string& host, AddressFamily family)
{
    unsigned char octets[DNS_QUERY_SIZE];
    return {octets, octets + dns_build_query(octets, 0xABCD, host.c_str(), family)};
}

TEST(DnsQuery, AsksForAnIpv6Address)
{
    EXPECT_EQ(query_for("v.example", IPV6), "\xAB\xCD\1\0\0\1\0\0\0\0\0\0\1v\7example\0\0\x1C\0\1"s);
}

static string question_for(const string& host)
{
    return query_for(host, IPV4).substr(12);
}

const Case HOSTS[] = {
    {"longest_host", times(126, "a"), "\x7E" + times(126, "a") + "\0\0\1\0\1"s},
    {"cut_host", "a." + times(125, "b"), "\1a\0\0\1\0\1"s},
    {"empty_label", "a..b", "\1a\0\0\1\0\1"s},
};

CASES(DnsQuestion, question_for, HOSTS);

const unsigned A = 1, CNAME = 5, AAAA = 28;
const string GOOD = "\1\2\3\4"s, OTHER = "\5\6\7\x08"s;
const string GOOD_IPV6 = times(15, "\0"s) + "\1";

static string number(std::size_t value)
{
    return {static_cast<char>(value >> 8), static_cast<char>(value & 0xFF)};
}

static string record(unsigned type, const string& data)
{
    return "\xC0\x0C" + number(type) + "\0\1\0\0\0\1"s + number(data.size()) + data;
}

static string response(std::size_t count, const string& records)
{
    return "??\x81\x83\0\1"s + number(count) + "\0\0\0\0\1v\7example\0\0\1\0\1"s + records;
}

// The addresses of both families in a response.
static string addresses_in(const string& message)
{
    const vector<unsigned char> octets(message.begin(), message.end());
    string texts;
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        IpAddress address;
        if (dns_find_address(octets.data(), octets.size(), family, address))
            texts += address_text(address) + " ";
    }
    return texts;
}

const string ALIAS = record(CNAME, "\5alias\xC0\x0C");

const Case RESPONSES[] = {
    {"first_of_each_family", response(3, record(A, GOOD) + record(AAAA, GOOD_IPV6) + record(A, OTHER)), "1.2.3.4 ::1 "},
    {"alias_of_the_root", response(2, record(CNAME, "\0"s) + record(A, GOOD)), "1.2.3.4 "},
    {"short_data", response(2, record(A, "\1\2\3") + record(AAAA, times(15, "6"))), ""},
    {"high_byte_of_the_count", response(256, record(A, GOOD)), "1.2.3.4 "},
    {"high_byte_of_the_type", response(1, record(257, "\5alias\0"s)), ""},
    {"high_byte_of_the_length", response(1, record(A, GOOD + times(252, "x"))), "1.2.3.4 "},
    {"count_of_none", response(0, record(A, GOOD)), ""},
    {"cut_pointer", response(1, record(CNAME, "\xC0")), ""},
    {"20th_record", response(20, times(19, ALIAS) + record(A, GOOD)), "1.2.3.4 "},
    {"21st_record", response(21, times(20, ALIAS) + record(A, GOOD)), ""},
    {"cut_question", response(1, "").substr(0, 16), ""},
};

CASES(DnsResponse, addresses_in, RESPONSES);
