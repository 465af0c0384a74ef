#include "probe/probe_targets.h"

#include "cases.h"
#include "probe_hosts.h"

namespace
{

// The URL of a device class.
template <AddressFamily FAMILY> string target(int device_class)
{
    ProbeUrl url;
    EXPECT_TRUE(select_probe_target(FAMILY, device_class, url));
    return url.host + ":"s + std::to_string(url.port) + url.path;
}

const CaseOf<int> IPV4_CLASSES[] = {
    {"class_0", 0, V4_HOST_A + ":80/lib/tolvane.xml"s},  {"class_1", 1, V4_HOST_B + ":80/lib/tolvane1.xml"s},
    {"class_2", 2, V4_HOST_B + ":80/lib/tolvane2.xml"s}, {"class_3", 3, V4_HOST_C + ":80/lib/tolvane3.xml"s},
    {"class_4", 4, V4_HOST_C + ":80/lib/tolvane4.xml"s}, {"class_5", 5, V4_HOST_C + ":80/lib/tolvane5.xml"s},
    {"no_class", 7, V4_HOST_A + ":80/lib/tolvane.xml"s},
};

const CaseOf<int> IPV6_CLASSES[] = {
    {"class_0", 0, V6_HOST_A + ":80/lib/tolvane.xml"s},  {"class_1", 1, V6_HOST_B + ":80/lib/tolvane1.xml"s},
    {"class_2", 2, V6_HOST_B + ":80/lib/tolvane2.xml"s}, {"class_3", 3, V6_HOST_C + ":80/lib/tolvane3.xml"s},
    {"class_4", 4, V6_HOST_C + ":80/lib/tolvane4.xml"s}, {"class_5", 5, V6_HOST_C + ":80/lib/tolvane5.xml"s},
};

CASES(Ipv4Target, target<IPV4>, IPV4_CLASSES);
CASES(Ipv6Target, target<IPV6>, IPV6_CLASSES);

} // namespace
