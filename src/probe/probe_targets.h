// Which document a probe fetches.
#pragma once

#include "address_family.h"
#include "probe/probe_url.h"

// Takes the document URL of a device class 0 to 5 from the table of targets, and that of DEVICE_CLASS_CONFIG from the
// configuration file. The URL's host is the one to resolve. Returns false if the configuration file has no URL that
// split_probe_url accepts.
bool select_probe_target(AddressFamily family, int device_class, ProbeUrl& url);
