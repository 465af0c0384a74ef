#include "cases.h"

namespace
{

string ipv4_class(const string& text)
{
    return std::to_string(classify_ipv4_address(address_of(IPV4, text)));
}

const Case IPV4_CLASSES[] = {
    {"unset", "0.0.0.0", "0"},
    {"only_the_last_byte_set", "0.0.0.1", "4"},
    {"broadcast", "255.255.255.255", "0"},
    {"before_broadcast", "255.255.255.254", "4"},
    {"private_10", "10.255.0.0", "1"},
    {"before_private_172", "172.15.255.255", "4"},
    {"first_private_172", "172.16.0.0", "2"},
    {"last_private_172", "172.31.255.255", "2"},
    {"after_private_172", "172.32.0.0", "4"},
    {"private_192", "192.168.0.0", "3"},
    {"other_192", "192.169.0.0", "4"},
    {"other_with_168", "193.168.0.0", "4"},
};

CASES(Ipv4Class, ipv4_class, IPV4_CLASSES);

TEST(IpAddress, OfTheOtherFamilyHasNoIpv4Class)
{
    EXPECT_EQ(classify_ipv4_address(address_of(IPV6, "a00::1")), ADDR_INVALID);
}

} // namespace
