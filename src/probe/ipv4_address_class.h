// What kind of network an IPv4 address belongs to.
#pragma once

enum Ipv4AddressClass : int {
    ADDR_INVALID = 0,     // no IPv4 address, 0.0.0.0 or 255.255.255.255
    ADDR_PRIVATE_10 = 1,  // 10.0.0.0/8 (RFC 1918, as the next two)
    ADDR_PRIVATE_172 = 2, // 172.16.0.0/12
    ADDR_PRIVATE_192 = 3, // 192.168.0.0/16
    ADDR_OTHER = 4,
};

// Classifies an address text.
Ipv4AddressClass classify_ipv4_address(const char* text);
