#include "cases.h"
#include "platform/address_text.h"

static string is_private(const string& text)
{
    IpAddress address;
    convert_address(IPV4, text.c_str(), address);
    return is_private_ipv4(address) ? "yes" : "no";
}

const Case ADDRESSES[] = {
    {"first_range", "10.255.0.0", "yes"},         {"before_second_range", "172.15.0.0", "no"},
    {"end_of_second_range", "172.31.0.0", "yes"}, {"after_second_range", "172.32.0.0", "no"},
    {"third_range", "192.168.0.0", "yes"},        {"after_third_range", "192.169.0.0", "no"},
};

CASES(PrivateIpv4, is_private, ADDRESSES);
