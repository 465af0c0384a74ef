#include "cli/command_line.h"

#include <strings.h>
#include <unistd.h>

#include <cstring>

#include "platform/text_field.h"
#include "platform/text_io.h"

namespace
{

constexpr char USAGE[] = "Varnoko Internet Connection Checker Ver." TOLVANE_VERSION "\n"
                         "                          Copyright (C) 2026 Varnoko\n"
                         "Usage :\n"
                         "        -v or -V :Version Infomation\n"
                         "        -i or -I (Interface):Internet Connection Interface Name, EX) -i eth1\n"
                         "        -woi or -WOI : without Interface Checking.\n"
                         "        -d or -D : Display the result.\n"
                         "        -dev0    : check old address for products before 2017/3/3.\n"
                         "        -dev1    : check address for network devices.\n"
                         "        -dev2    : check address for NAS.\n"
                         "        -dev3    : check address for IP Camera.\n"
                         "        -dev4    : check address for IoT devices/sensors.\n"
                         "        -dev5    : check address for other devices.\n"
                         "        -trm (Interfaces): Terminal device check mode, EX) -trm eth0,wlan0.\n"
                         "                   This mode can not use -woi option same time.\n"
                         "        -et      : Every time check mode.\n"
                         "        -nrt     : No 3 retry.\n"
                         "        -6       : Check IPv6 only.\n"
                         "        -46       : Check IPv4 and IPv6.\n"
                         "        *Without -6 or -46 option, check IPv4 only (default).\n"
                         "        EX) tolvane -woi\n"
                         "            tolvane -woi -i eth2\n"
                         "            tolvane -trm eth0,wlan0 -dev1\n";

enum class Option : unsigned char {
    VERSION,
    INTERFACE,
    WITHOUT_INTERFACE_CHECK,
    DISPLAY,
    DEVICE_CLASS,
    TERMINAL,
    EVERY_TIME,
    NO_RETRY,
    IPV6_ONLY,
    BOTH_FAMILIES,
    UNKNOWN,
};

struct OptionWord {
    char word[6];
    Option option;
};

constexpr OptionWord OPTION_WORDS[] = {
    {"-v", Option::VERSION},         {"-i", Option::INTERFACE},       {"-woi", Option::WITHOUT_INTERFACE_CHECK},
    {"-d", Option::DISPLAY},         {"-dev0", Option::DEVICE_CLASS}, {"-dev1", Option::DEVICE_CLASS},
    {"-dev2", Option::DEVICE_CLASS}, {"-dev3", Option::DEVICE_CLASS}, {"-dev4", Option::DEVICE_CLASS},
    {"-dev5", Option::DEVICE_CLASS}, {"-trm", Option::TERMINAL},      {"-et", Option::EVERY_TIME},
    {"-nrt", Option::NO_RETRY},      {"-6", Option::IPV6_ONLY},       {"-46", Option::BOTH_FAMILIES},
};

Option find_option(const char* argument)
{
    for (const OptionWord& entry : OPTION_WORDS) {
        if (strncasecmp(argument, entry.word, sizeof entry.word) == 0)
            return entry.option;
    }
    return Option::UNKNOWN;
}

// Returns false, with the field untouched, if the value does not fit whole.
template <std::size_t SIZE> bool store_value(const char* value, char (&field)[SIZE])
{
    const std::size_t length = std::strlen(value);
    if (length > SIZE - 1)
        return false;
    copy_text(value, length, field);
    return true;
}

constexpr bool takes_value(Option option)
{
    return option == Option::INTERFACE || option == Option::TERMINAL;
}

void print_version_and_usage()
{
    write_text(STDOUT_FILENO, USAGE);
}

// `value` is the next argument for an option that takes one, null if there is none. Returns false if the run is over.
bool apply_option(Option option, const char* argument, const char* value, RunOptions& options, DriverSettings& settings)
{
    switch (option) {
    case Option::VERSION:
        print_version_and_usage();
        return false;
    case Option::INTERFACE:
        return value == nullptr || store_value(value, settings.interface_name.text);
    case Option::WITHOUT_INTERFACE_CHECK:
        settings.interface_check_enabled = false;
        return store_value(NO_INTERFACE_NAMED, settings.interface_name.text);
    case Option::DISPLAY:
        settings.display_result = true;
        return true;
    case Option::DEVICE_CLASS:
        options.device_class = argument[std::strlen("-dev")] - '0';
        return true;
    case Option::TERMINAL:
        options.check_mode = MODE_TERMINAL;
        return value == nullptr || store_value(value, settings.terminal_list);
    case Option::EVERY_TIME:
        options.check_mode = MODE_EVERY_TIME;
        return true;
    case Option::NO_RETRY:
        settings.retry_count = 0;
        return true;
    case Option::IPV6_ONLY:
    case Option::BOTH_FAMILIES:
        options.ipv4_enabled = option == Option::BOTH_FAMILIES;
        options.ipv6_enabled = true;
        return true;
    case Option::UNKNOWN:
        break;
    }
    return false;
}

} // namespace

bool parse_command_line(int argc, const char* const* argv, RunOptions& options, DriverSettings& settings)
{
    for (int i = 1; i < argc; ++i) {
        const char* argument = argv[i];
        const Option option = find_option(argument);
        const char* value = takes_value(option) && i + 1 < argc ? argv[++i] : nullptr;
        if (!apply_option(option, argument, value, options, settings))
            return false;
    }
    return true;
}
