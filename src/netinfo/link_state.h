// Whether the kernel reports an interface's link as up.
#pragma once

// Reads /sys/class/net/NAME/operstate (kernel documentation, sysfs-class-net). Returns 1 for up, 0 for down, -1 when
// there is no such readable file or it names any other state.
int get_link_state(const char* name);
