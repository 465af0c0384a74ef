#include "netinfo/terminal_scan.h"

#include <cstring>

#include "netinfo/link_state.h"
#include "platform/text_field.h"
#include "result_code.h"

namespace
{

constexpr int PRESENT = 2;
constexpr int HAS_IPV4 = family_code(AddressFamily::IPV4, WORKS);
constexpr int HAS_IPV6 = family_code(AddressFamily::IPV6, WORKS);
constexpr int HAS_ADDRESS = HAS_IPV4 | HAS_IPV6;

bool is_name_character(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '.' || character == '-' || character == '/';
}

void read_scan_output(TextReader& output, ScannedInterface& entry)
{
    NetConfig discarded = {}; // only the status of an entry survives
    char line[IFCONFIG_LINE_SIZE];
    while (read_piece(output, line)) {
        const IfconfigItems items = parse_ifconfig_line(line, discarded);
        if (items.hardware_address)
            entry.link_state = get_link_state(entry.name);
        entry.status = update_scan_status(entry.status, items);
    }
}

void scan_interface(ScannedInterface& entry)
{
    Tool ifconfig;
    if (!start_ifconfig(entry.name, ifconfig))
        return;
    read_scan_output(ifconfig.output, entry);
    finish_tool(ifconfig);
}

// Reads one name up to a comma or the end, and leaves `list` there. Stores the characters that fit. Returns how many
// characters the name has.
std::size_t take_listed_name(const char*& list, char (&name)[SCANNED_NAME_SIZE])
{
    std::size_t length = 0;
    std::memset(name, 0, sizeof name);
    for (; *list != '\0' && *list != ','; ++list) {
        if (!is_name_character(*list))
            continue;
        if (length < sizeof name - 1)
            name[length] = *list;
        ++length;
    }
    return length;
}

} // namespace

std::size_t split_interface_list(const char* list, ScannedInterface (&table)[MAX_SCANNED_INTERFACES])
{
    std::size_t count = 0;
    while (*list != '\0' && count < MAX_SCANNED_INTERFACES) {
        table[count].status = 0;
        table[count].link_state = -1;
        const std::size_t length = take_listed_name(list, table[count].name);
        if (*list == ',')
            ++list;
        if (length > 0 && length < SCANNED_NAME_SIZE)
            ++count;
    }
    return count;
}

int update_scan_status(int status, const IfconfigItems& items)
{
    if (items.hardware_address && (status & HAS_ADDRESS) == 0)
        status = PRESENT;
    if (items.ipv4_address)
        status |= HAS_IPV4;
    if (items.global_ipv6_address)
        status |= HAS_IPV6;
    return status;
}

int select_interface(const ScannedInterface* table, std::size_t count, InterfaceName& selected)
{
    static_assert(SCANNED_NAME_SIZE <= INTERFACE_NAME_SIZE, "a listed name fits into an interface name");
    int result = INTERFACE_MISSING;
    for (const ScannedInterface* entry = table; entry != table + count; ++entry) {
        if ((entry->status & HAS_ADDRESS) != 0) {
            copy_text(entry->name, std::strlen(entry->name), selected.text);
            return entry->status & HAS_ADDRESS;
        }
        if (entry->status == PRESENT)
            result = NO_INTERFACE_HAS_ADDRESS;
    }
    return result;
}

int scan_terminal_interfaces(const char* list, InterfaceName& selected)
{
    ScannedInterface table[MAX_SCANNED_INTERFACES];
    const std::size_t count = split_interface_list(list, table);
    for (std::size_t i = 0; i < count; ++i)
        scan_interface(table[i]);
    return select_interface(table, count, selected);
}
