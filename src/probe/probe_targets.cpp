#include "probe_targets.h"

ProbeTarget select_probe_target(AddressFamily family, int device_class, ProbeConfig& config)
{
    if (device_class != DEVICE_CLASS_CONFIG)
        return built_in_target(family, device_class);
    config = read_probe_config();
    return {nullptr, config.xmluri};
}
