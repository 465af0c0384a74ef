#include "platform/address_text.h"

#include <arpa/inet.h>

#include <cstring>

bool convert_address(AddressFamily family, const char* text, IpAddress& address)
{
    // Some C libraries write part of the target even if they fail.
    IpAddress converted = {family, {}};
    in_addr ipv4;
    const bool is_address =
        family == AddressFamily::IPV4 ? inet_aton(text, &ipv4) == 1 : inet_pton(AF_INET6, text, converted.bytes) == 1;
    if (!is_address)
        return false;
    if (family == AddressFamily::IPV4)
        std::memcpy(converted.bytes, &ipv4, sizeof ipv4);
    address = converted;
    return true;
}
