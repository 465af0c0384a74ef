#include "cases.h"

static string ipv4_class(const IpAddress& address)
{
    return std::to_string(classify_ipv4_address(address));
}

const CaseOf<IpAddress> ADDRESSES[] = {
    {"broadcast", {IPV4, {255, 255, 255, 255}}, "0"}, {"private_10", {IPV4, {10, 255}}, "1"},
    {"last_private_172", {IPV4, {172, 31}}, "2"},     {"after_private_172", {IPV4, {172, 32}}, "4"},
    {"private_192", {IPV4, {192, 168}}, "3"},         {"public_192", {IPV4, {192, 169, 0, 1}}, "4"},
};

CASES(Ipv4Class, ipv4_class, ADDRESSES);
