// What ifconfig prints about an interface, in the classic form of net-tools 1 and BusyBox.
#pragma once

#include <cstddef>

#include "net_config.h"
#include "platform/tool.h"

inline constexpr std::size_t IFCONFIG_LINE_SIZE = 2047; // lines of at most 2046 characters

// Which items a line held.
struct IfconfigItems {
    bool hardware_address;    // "HWaddr ": the interface is present
    bool ipv4_address;        // "inet addr:", whether or not its text converted
    bool global_ipv6_address; // "inet6 addr:" with "Scope:Global", and its text converted
};

// Takes hw_addr, ipv4_addr, ipv4_mask, ipv6_addr and ipv6_prefix_len from the items of one line. A text that does not
// convert leaves its field as it was; the prefix length is stored even if the address before it does not convert.
// Missing groups of a MAC address are 0.
IfconfigItems parse_ifconfig_line(const char* line, NetConfig& config);

// Starts ifconfig with the interface name as its only argument, whatever characters it holds. Returns false if it could
// not be started.
bool start_ifconfig(const char* interface_name, Tool& ifconfig);
