// Whether the kernel reports an interface's link as up.
#pragma once

// Reads /sys/class/net/NAME/operstate (kernel documentation, sysfs-class-net). Returns 1 if its first line begins with
// "up", 0 if it begins with "down", and -1 for any other text or if there is no such readable file.
int get_link_state(const char* interface_name);
