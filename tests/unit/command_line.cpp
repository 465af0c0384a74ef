#include "cli/command_line.h"

#include <sstream>

#include "cases.h"

namespace
{

using Arguments = vector<string>;

// "FAMILIES CLASS MODE INTERFACE [LIST] ATTEMPTS" and what else the arguments set.
string settings_after(const Arguments& arguments)
{
    vector<const char*> words = {"-v"}; // the program's path, which is no option
    for (const string& argument : arguments)
        words.push_back(argument.c_str());
    RunOptions options;
    DriverSettings settings;
    if (!parse_command_line(static_cast<int>(words.size()), words.data(), options, settings))
        return "over";
    std::ostringstream text;
    text << (options.ipv4_enabled ? "4" : "") << (options.ipv6_enabled ? "6 " : " ") << options.device_class
         << (options.check_mode == MODE_TERMINAL ? " terminal " : " every ") << settings.interface_name.text << " ["
         << settings.terminal_list << "] " << settings.retry_count << (settings.display_result ? " shown" : "")
         << (settings.interface_check_enabled ? "" : " unexamined");
    return text.str();
}

const CaseOf<Arguments> COMMAND_LINES[] = {
    {"defaults", {}, "4 1 every eth0 [] 3"},
    {"options_in_upper_case", {"-D", "-NRT", "-WOI", "-6", "-DEV0"}, "6 0 every nonic [] 0 shown unexamined"},
    {"terminal_mode", {"-TrM", "a,b", "-dev5"}, "4 5 terminal eth0 [a,b] 3"},
    {"last_mode_counts", {"-trm", "a,b", "-et"}, "4 1 every eth0 [a,b] 3"},
    {"last_list_counts", {"-trm", "long", "-trm", "c"}, "4 1 terminal eth0 [c] 3"},
    {"last_class_counts", {"-dev2", "-dev3", "-dev4"}, "4 4 every eth0 [] 3"},
    {"both_families_after_one", {"-6", "-46"}, "46 1 every eth0 [] 3"},
    {"one_family_after_both", {"-46", "-6"}, "6 1 every eth0 [] 3"},
    {"value_that_looks_like_an_option", {"-i", "-d", "-trm", "-v"}, "4 1 terminal -d [-v] 3"},
    {"interface_after_no_examination", {"-woi", "-I", "eth2"}, "4 1 every eth2 [] 3 unexamined"},
    {"no_examination_after_interface", {"-i", "eth2", "-woi"}, "4 1 every nonic [] 3 unexamined"},
    {"missing_interface", {"-d", "-i"}, "4 1 every eth0 [] 3 shown"},
    {"missing_list", {"-d", "-trm"}, "4 1 terminal eth0 [] 3 shown"},
    {"longest_interface", {"-i", times(19, "n")}, "4 1 every " + times(19, "n") + " [] 3"},
    {"too_long_interface", {"-i", times(20, "n")}, "over"},
    {"longest_list", {"-trm", times(69, "l")}, "4 1 terminal eth0 [" + times(69, "l") + "] 3"},
    {"too_long_list", {"-trm", times(70, "l")}, "over"},
    {"class_without_number", {"-dev"}, "over"},
    {"no_class_6", {"-dev6"}, "over"},
    {"no_option", {"-d", "eth0"}, "over"},
    {"value_in_the_same_word", {"-ieth1"}, "over"},
    {"version", {"-V"}, "over"},
};

CASES(CommandLine, settings_after, COMMAND_LINES);

} // namespace
