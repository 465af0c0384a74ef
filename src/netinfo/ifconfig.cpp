#include "netinfo/ifconfig.h"

#include <cstdlib>
#include <cstring>

#include "netinfo/hex.h"
#include "platform/address_text.h"
#include "platform/text_field.h"

namespace
{

constexpr std::size_t IPV4_TEXT_LENGTH = 50;
constexpr std::size_t IPV6_EXAMINED_LENGTH = 43; // a full address, a slash and a three-digit prefix length
constexpr std::size_t PREFIX_TEXT_LENGTH = 9;

// What follows the first `label` in the line, or null.
const char* text_after(const char* line, const char* label)
{
    const char* found = std::strstr(line, label);
    return found == nullptr ? nullptr : found + std::strlen(label);
}

// Groups of two digits between single colons.
void parse_hardware_address(const char* text, unsigned char (&address)[6])
{
    constexpr std::size_t GROUP_DISTANCE = 3;
    const std::size_t length = std::strlen(text);
    for (std::size_t i = 0; i < sizeof address; ++i)
        address[i] = i * GROUP_DISTANCE < length ? hex_to_byte(text + i * GROUP_DISTANCE) : 0;
}

void parse_ipv4_address(const char* text, IpAddress& address)
{
    char address_text[IPV4_TEXT_LENGTH + 1];
    copy_leading(text, IPV4_TEXT_CHARACTERS, address_text);
    convert_address(AddressFamily::IPV4, address_text, address);
}

struct Ipv6Item {
    char address[IPV6_EXAMINED_LENGTH + 1];
    char prefix[PREFIX_TEXT_LENGTH + 1];
};

bool is_address_character(char character)
{
    return character != '\0' && std::strchr(IPV6_TEXT_CHARACTERS, character) != nullptr;
}

// Splits ADDRESS/PREFIX. Another slash starts the prefix again at its first character, without clearing the others.
void split_ipv6_item(const char* text, Ipv6Item& item)
{
    std::memset(&item, 0, sizeof item);
    std::size_t address_length = 0;
    std::size_t prefix_length = 0;
    bool in_prefix = false;
    for (std::size_t i = 0; i < IPV6_EXAMINED_LENGTH && text[i] != '\0'; ++i) {
        const char character = text[i];
        if (character == ' ' || character == '\r' || character == '\n')
            break;
        if (character == '/') {
            in_prefix = true;
            prefix_length = 0;
        } else if (!is_address_character(character)) {
            continue;
        } else if (!in_prefix) {
            item.address[address_length++] = character;
        } else if (prefix_length < PREFIX_TEXT_LENGTH) {
            item.prefix[prefix_length++] = character;
        }
    }
}

// Returns whether the address converted. The prefix length is taken in any case.
bool parse_ipv6_address(const char* text, NetConfig& config)
{
    Ipv6Item item;
    split_ipv6_item(text, item);
    if (item.prefix[0] != '\0')
        config.ipv6_prefix_len = static_cast<std::uint16_t>(std::strtoll(item.prefix, nullptr, 10));
    return convert_address(AddressFamily::IPV6, item.address, config.ipv6_addr);
}

} // namespace

IfconfigItems parse_ifconfig_line(const char* line, NetConfig& config)
{
    IfconfigItems items = {false, false, false};
    if (const char* text = text_after(line, "HWaddr ")) {
        parse_hardware_address(text, config.hw_addr);
        items.hardware_address = true;
    }
    if (const char* text = text_after(line, "inet addr:")) {
        parse_ipv4_address(text, config.ipv4_addr);
        items.ipv4_address = true;
    }
    if (const char* text = text_after(line, "Mask:"))
        parse_ipv4_address(text, config.ipv4_mask);
    const char* text = text_after(line, "inet6 addr:");
    if (text != nullptr && *text != '\0' && std::strstr(line, "Scope:Global") != nullptr)
        items.global_ipv6_address = parse_ipv6_address(text + 1, config); // the text follows a blank
    return items;
}

bool start_ifconfig(const char* interface_name, Tool& ifconfig)
{
    return start_tool("/sbin/ifconfig", interface_name, nullptr, ifconfig);
}
