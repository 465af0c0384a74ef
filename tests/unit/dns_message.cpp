#include "dns/dns_message.h"

#include "cases.h"

static string ipv6_query_for(const string& host)
{
    unsigned char octets[DNS_QUERY_SIZE];
    return {octets, octets + dns_build_query(octets, 0xABCD, host.c_str(), IPV6)};
}

const string HEADER = "\xAB\xCD\1\0\0\1\0\0\0\0\0\0"s, TYPE_AND_CLASS = "\0\0\x1C\0\1"s;

const Case HOSTS[] = {
    {"longest_host", times(126, "a"), HEADER + "\x7E" + times(126, "a") + TYPE_AND_CLASS},
    {"cut_host", "a." + times(125, "b"), HEADER + "\1a" + TYPE_AND_CLASS},
    {"empty_label", "a..b", HEADER + "\1a" + TYPE_AND_CLASS},
};

CASES(DnsQuery, ipv6_query_for, HOSTS);

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
    {"short_data", response(2, record(A, "\1\2\3") + record(AAAA, times(15, "6"))), ""},
    {"numbers_of_two_octets", response(256, record(257, "\0"s) + record(A, GOOD + times(252, "x"))), "1.2.3.4 "},
    {"count_of_none", response(0, record(A, GOOD)), ""},
    {"20th_record", response(20, times(19, ALIAS) + record(A, GOOD)), "1.2.3.4 "},
    {"21st_record", response(21, times(20, ALIAS) + record(A, GOOD)), ""},
};

CASES(DnsResponse, addresses_in, RESPONSES);
