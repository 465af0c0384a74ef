#include "cli/command_line.h"

#include <iterator>
#include <sstream>

#include "cases.h"

// Families, device class, mode, interface, list, attempts, and the flags that are set.
static string settings_after(const string& arguments)
{
    std::istringstream stream("-v " + arguments); // the program's path is no option
    const vector<string> words(std::istream_iterator<string>(stream), {});
    vector<const char*> argv;
    for (const string& word : words)
        argv.push_back(word.c_str());
    RunOptions options;
    DriverSettings settings;
    if (!parse_command_line(static_cast<int>(argv.size()), argv.data(), options, settings))
        return "over";
    char text[150];
    std::snprintf(text, sizeof text, "%s%s %d%d %s [%s] %d%s%s", options.ipv4_enabled ? "4" : "",
                  options.ipv6_enabled ? "6" : "", options.device_class, options.check_mode,
                  settings.interface_name.text, settings.terminal_list, settings.retry_count,
                  settings.display_result ? " shown" : "", settings.interface_check_enabled ? "" : " unexamined");
    return text;
}

const Case COMMAND_LINES[] = {
    {"upper_case", "-D -NRT -WOI -6 -DEV0", "6 01 nonic [] 0 shown unexamined"},
    {"list_and_last_class", "-TrM a,b -dev2 -dev3 -dev4 -dev5", "4 52 eth0 [a,b] 3"},
    {"last_mode_and_families", "-trm a,b -et -6 -46", "46 11 eth0 [a,b] 3"},
    {"options_as_values", "-i -d -trm -v", "4 12 -d [-v] 3"},
    {"missing_interface", "-i", "4 11 eth0 [] 3"},
    {"longest_values", "-i " + times(19, "n") + " -trm " + times(69, "l"),
     "4 12 " + times(19, "n") + " [" + times(69, "l") + "] 3"},
    {"too_long_interface", "-i " + times(20, "n"), "over"},
};

CASES(CommandLine, settings_after, COMMAND_LINES);
