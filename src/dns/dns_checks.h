// Whether the configured name servers resolve the probe host of a device class.
#pragma once

#include "address_family.h"
#include "driver_settings.h"

// Returns 0 when one of the name servers gave an address of the family for the class's probe host, -1 otherwise.
// `interface_name` is the driver's own buffer; a link-local name server may have another name written into it.
int check_dns(AddressFamily family, int device_class, char (&interface_name)[INTERFACE_NAME_SIZE]);

inline int check_ipv4_dns(int device_class, char (&interface_name)[INTERFACE_NAME_SIZE])
{
    return check_dns(AddressFamily::IPV4, device_class, interface_name);
}

inline int check_ipv6_dns(int device_class, char (&interface_name)[INTERFACE_NAME_SIZE])
{
    return check_dns(AddressFamily::IPV6, device_class, interface_name);
}
