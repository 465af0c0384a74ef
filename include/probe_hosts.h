// The probe servers of the maker, and which of them serves which document to a device class.
#pragma once

#include "address_family.h"

// Fully qualified DNS names, chosen when a deployment is built (the CMake cache variables TOLVANE_V4_HOST_A and so on).
inline constexpr char V4_HOST_A[] = TOLVANE_V4_HOST_A;
inline constexpr char V4_HOST_B[] = TOLVANE_V4_HOST_B;
inline constexpr char V4_HOST_C[] = TOLVANE_V4_HOST_C;
inline constexpr char V6_HOST_A[] = TOLVANE_V6_HOST_A;
inline constexpr char V6_HOST_B[] = TOLVANE_V6_HOST_B;
inline constexpr char V6_HOST_C[] = TOLVANE_V6_HOST_C;

inline constexpr int DEVICE_CLASSES = 6;
inline constexpr int DEVICE_CLASS_CONFIG = 6; // the probes' fallback to the configuration file

// The document URL is "http://", the query host and the path.
struct ProbeTarget {
    const char* query_host; // resolved through the name servers
    const char* path;
};

inline constexpr ProbeTarget PROBE_TARGETS_V4[DEVICE_CLASSES] = {
    {V4_HOST_A, "/lib/tolvane.xml"},  {V4_HOST_B, "/lib/tolvane1.xml"}, {V4_HOST_B, "/lib/tolvane2.xml"},
    {V4_HOST_C, "/lib/tolvane3.xml"}, {V4_HOST_C, "/lib/tolvane4.xml"}, {V4_HOST_C, "/lib/tolvane5.xml"},
};

inline constexpr ProbeTarget PROBE_TARGETS_V6[DEVICE_CLASSES] = {
    {V6_HOST_A, "/lib/tolvane.xml"},  {V6_HOST_B, "/lib/tolvane1.xml"}, {V6_HOST_B, "/lib/tolvane2.xml"},
    {V6_HOST_C, "/lib/tolvane3.xml"}, {V6_HOST_C, "/lib/tolvane4.xml"}, {V6_HOST_C, "/lib/tolvane5.xml"},
};

// The target of a device class 0 to 5; any other class gets that of class 0.
inline const ProbeTarget& built_in_target(AddressFamily family, int device_class)
{
    const int row = device_class >= 0 && device_class < DEVICE_CLASSES ? device_class : 0;
    return family == AddressFamily::IPV4 ? PROBE_TARGETS_V4[row] : PROBE_TARGETS_V6[row];
}
