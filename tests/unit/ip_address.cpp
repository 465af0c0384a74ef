#include "cases.h"

static string is_private(const IpAddress& address)
{
    return is_private_ipv4(address) ? "private" : "public";
}

const CaseOf<IpAddress> ADDRESSES[] = {
    {"private_10", {IPV4, {10, 255}}, "private"},
    {"before_private_172", {IPV4, {172, 15}}, "public"},
    {"last_private_172", {IPV4, {172, 31}}, "private"},
    {"after_private_172", {IPV4, {172, 32}}, "public"},
    {"private_192", {IPV4, {192, 168}}, "private"},
    {"public_192", {IPV4, {192, 169}}, "public"},
    {"ipv6", {IPV6, {10}}, "public"},
};

CASES(PrivateIpv4, is_private, ADDRESSES);
