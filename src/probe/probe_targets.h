// Which document a probe fetches.
#pragma once

#include "address_family.h"
#include "probe_config.h"
#include "probe_hosts.h"

// The target of a device class. That of DEVICE_CLASS_CONFIG is read from the configuration file into `config`, where
// its document URL then stands (empty when the file names none); its query host is null: the host of that URL serves.
ProbeTarget select_probe_target(AddressFamily family, int device_class, ProbeConfig& config);
