// The probe servers of the maker, and which of them serves which document to a device class.
#pragma once

#include <algorithm>

#include "address_family.h"

enum HostSlot : unsigned char { HOST_A, HOST_B, HOST_C };

inline constexpr std::size_t PROBE_HOST_SIZE =
    std::max({sizeof TOLVANE_V4_HOST_A, sizeof TOLVANE_V4_HOST_B, sizeof TOLVANE_V4_HOST_C, sizeof TOLVANE_V6_HOST_A,
              sizeof TOLVANE_V6_HOST_B, sizeof TOLVANE_V6_HOST_C});

// Fully qualified DNS names, chosen when a deployment is built (the CMake cache variables of these names). One array,
// because pointers would have to be relocated at each start.
inline constexpr char PROBE_HOSTS[][3][PROBE_HOST_SIZE] = {
    {TOLVANE_V4_HOST_A, TOLVANE_V4_HOST_B, TOLVANE_V4_HOST_C},
    {TOLVANE_V6_HOST_A, TOLVANE_V6_HOST_B, TOLVANE_V6_HOST_C},
};

inline constexpr int DEVICE_CLASSES = 6;
inline constexpr int DEVICE_CLASS_CONFIG = 6; // the probes' fallback to the configuration file

// The document URL is "http://", the family's host of the slot (which is also the one to resolve) and the path.
struct ProbeTarget {
    HostSlot slot;
    char path[18];
};

inline constexpr ProbeTarget PROBE_TARGETS[DEVICE_CLASSES] = {
    {HOST_A, "/lib/tolvane.xml"},  {HOST_B, "/lib/tolvane1.xml"}, {HOST_B, "/lib/tolvane2.xml"},
    {HOST_C, "/lib/tolvane3.xml"}, {HOST_C, "/lib/tolvane4.xml"}, {HOST_C, "/lib/tolvane5.xml"},
};

// The target of a device class 0 to 5; any other class gets that of class 0.
inline const ProbeTarget& built_in_target(int device_class)
{
    return PROBE_TARGETS[device_class >= 0 && device_class < DEVICE_CLASSES ? device_class : 0];
}

inline const char* probe_host(AddressFamily family, const ProbeTarget& target)
{
    return PROBE_HOSTS[static_cast<int>(family)][target.slot];
}
