#include "platform/address_text.h"

#include <arpa/inet.h>

bool convert_address(AddressFamily family, const char* text, void* address)
{
    // Some C libraries write part of the target when they fail.
    AnyAddress converted;
    const int result =
        family == AddressFamily::IPV4 ? inet_aton(text, &converted.ipv4) : inet_pton(AF_INET6, text, &converted.ipv6);
    if (result != 1)
        return false;
    std::memcpy(address, &converted, address_size(family));
    return true;
}
