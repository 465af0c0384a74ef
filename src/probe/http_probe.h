// The server probe: fetch the probe document over HTTP/1.0 and verify it, with retries and a fallback.
#pragma once

#include "address_family.h"
#include "driver_settings.h"

// Probes the server of a device class (0 to 5, or DEVICE_CLASS_CONFIG) with a budget of `tries` attempts, at least one.
// When the host was not resolved, the last attempt got no connection or no document verified, and the configuration
// file exists, the probe of the document that the file names decides instead, with one attempt. Returns the family's
// code of WORKS; DNS_QUERY_FAILED (also when an IPv4 answer was a private address that served no document);
// CONNECTION_FAILED; DOCUMENT_MISMATCH (also for a refused document URL): 1, 8, 9, 10 or 16, 128, 144, 160. Returns -1,
// for both families, when no name server is known. `interface_name` is the driver's own buffer; a link-local name
// server may have another name written into it.
int probe_server(AddressFamily family, int device_class, int tries, char (&interface_name)[INTERFACE_NAME_SIZE]);

inline int probe_server_ipv4(int device_class, int tries, char (&interface_name)[INTERFACE_NAME_SIZE])
{
    return probe_server(AddressFamily::IPV4, device_class, tries, interface_name);
}

inline int probe_server_ipv6(int device_class, int tries, char (&interface_name)[INTERFACE_NAME_SIZE])
{
    return probe_server(AddressFamily::IPV6, device_class, tries, interface_name);
}
