#include "probe/probe_targets.h"

#include "cases.h"
#include "probe_hosts.h"

// The document URLs of a device class for both families, without the scheme.
static string targets(int device_class)
{
    string text;
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        ProbeUrl url;
        EXPECT_TRUE(select_probe_target(family, device_class, url));
        text += url.host + ":"s + std::to_string(url.port) + url.path + " ";
    }
    return text;
}

static string both(const char* ipv4_host, const char* ipv6_host, const string& path)
{
    return ipv4_host + (":80" + path) + " " + ipv6_host + ":80" + path + " ";
}

const CaseOf<int> CLASSES[] = {
    {"old_products", 0, both(V4_HOST_A, V6_HOST_A, "/lib/tolvane.xml")},
    {"network_devices", 1, both(V4_HOST_B, V6_HOST_B, "/lib/tolvane1.xml")},
    {"storage", 2, both(V4_HOST_B, V6_HOST_B, "/lib/tolvane2.xml")},
    {"cameras", 3, both(V4_HOST_C, V6_HOST_C, "/lib/tolvane3.xml")},
    {"sensors", 4, both(V4_HOST_C, V6_HOST_C, "/lib/tolvane4.xml")},
    {"other_devices", 5, both(V4_HOST_C, V6_HOST_C, "/lib/tolvane5.xml")},
};

CASES(DeviceClass, targets, CLASSES);
