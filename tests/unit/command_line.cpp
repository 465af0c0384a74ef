#include "cli/command_line.h"

#include "cases.h"

using Arguments = vector<string>;

// Families, device class, mode, interface, list, attempts, and the flags that are set.
static string settings_after(const Arguments& arguments)
{
    vector<const char*> words = {"-v"}; // the program's path, which is no option
    for (const string& argument : arguments)
        words.push_back(argument.c_str());
    RunOptions options;
    DriverSettings settings;
    if (!parse_command_line(static_cast<int>(words.size()), words.data(), options, settings))
        return "over";
    const string families = (options.ipv4_enabled ? "4"s : "") + (options.ipv6_enabled ? "6" : "");
    const int numbers = 10 * options.device_class + options.check_mode;
    return families + " " + std::to_string(numbers) + " " + settings.interface_name.text + " [" +
           settings.terminal_list + "] " + std::to_string(settings.retry_count) +
           (settings.display_result ? " shown" : "") + (settings.interface_check_enabled ? "" : " unexamined");
}

const CaseOf<Arguments> COMMAND_LINES[] = {
    {"upper_case", {"-D", "-NRT", "-WOI", "-6", "-DEV0"}, "6 1 nonic [] 0 shown unexamined"},
    {"list_and_last_class", {"-TrM", "a,b", "-dev2", "-dev3", "-dev4", "-dev5"}, "4 52 eth0 [a,b] 3"},
    {"both_families_after_one", {"-6", "-46"}, "46 11 eth0 [] 3"},
    {"one_family_after_both", {"-46", "-6"}, "6 11 eth0 [] 3"},
    {"options_as_values", {"-i", "-d", "-trm", "-v"}, "4 12 -d [-v] 3"},
    {"last_interface", {"-woi", "-I", "eth2"}, "4 11 eth2 [] 3 unexamined"},
    {"missing_interface", {"-i"}, "4 11 eth0 [] 3"},
    {"missing_list", {"-trm"}, "4 12 eth0 [] 3"},
    {"longest_interface", {"-i", times(19, "n")}, "4 11 " + times(19, "n") + " [] 3"},
    {"too_long_interface", {"-i", times(20, "n")}, "over"},
    {"longest_list", {"-trm", times(69, "l")}, "4 12 eth0 [" + times(69, "l") + "] 3"},
    {"too_long_list", {"-trm", times(70, "l")}, "over"},
    {"version", {"-V"}, "over"},
};

CASES(CommandLine, settings_after, COMMAND_LINES);
