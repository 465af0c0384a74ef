// The server probe: fetches the probe document over HTTP/1.0 and verifies it, in several attempts and with a fallback.
#pragma once

#include "address_family.h"
#include "interface_name.h"

// Probes the server of a device class (0 to 5) in up to `attempts` attempts, at least one. Only a failed connection or
// a document that does not verify leads to another attempt. If the configuration file exists, one attempt with the
// document that it names follows the last failed attempt, or a failed name query, and its result counts. Nothing
// follows if a socket cannot be created, no name server is known, or the document URL is refused. Returns the family's
// code of
//   WORKS              1, 16
//   DNS_QUERY_FAILED   8, 128   also if an IPv4 answer was a private address that served no document
//   CONNECTION_FAILED  9, 144
//   DOCUMENT_MISMATCH  10, 160  also if the document URL was refused
// or, for both families, -1 if no name server is known: family_outcome of -1 is NO_USABLE_NAME_SERVER.
// `interface_name` is passed to dns_query, which may replace it.
int probe_server(AddressFamily family, int device_class, int attempts, InterfaceName& interface_name);
