// Fuzzers of everything that reads bytes from outside; the environment variable FUZZ_TARGET names the one to run.
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <map>
#include <vector>

#include "cli/command_line.h"
#include "cli/result_file.h"
#include "dns/dns_message.h"
#include "netinfo/default_routes.h"
#include "netinfo/ifconfig.h"
#include "netinfo/resolver_files.h"
#include "netinfo/terminal_scan.h"
#include "platform/shell_word.h"
#include "probe/probe_document.h"
#include "probe/probe_url.h"
#include "result_code.h"
#include "support.h"

using std::string;

namespace
{

void require(bool condition)
{
    if (!condition)
        std::abort();
}

// The text up to its first zero, in a heap block that ends behind that zero: a read past it is seen.
std::vector<char> exact_text(const string& input)
{
    return {input.c_str(), input.c_str() + std::strlen(input.c_str()) + 1};
}

bool holds(const char* text, const string& part)
{
    return std::strstr(text, part.c_str()) != nullptr;
}

template <std::size_t SIZE> void require_text(const char (&text)[SIZE], std::size_t least_length, const char* never)
{
    require(strnlen(text, SIZE) < SIZE && std::strlen(text) >= least_length && std::strpbrk(text, never) == nullptr);
}

constexpr unsigned char UNTOUCHED = 0xA5;

void require_untouched(const std::vector<unsigned char>& bytes, std::size_t from)
{
    for (; from < bytes.size(); ++from)
        require(bytes[from] == UNTOUCHED);
}

void dns_response(const string& input)
{
    const std::vector<unsigned char> message(input.begin(), input.end());
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        std::vector<unsigned char> address(16, UNTOUCHED);
        const bool found = dns_find_address(message.data(), message.size(), family, address.data());
        const std::size_t size = found ? address_size(family) : 0;
        require(!found || memmem(message.data(), message.size(), address.data(), size) != nullptr);
        require_untouched(address, size);
    }
}

void dns_name(const string& input)
{
    const std::vector<char> host = exact_text(input);
    std::vector<unsigned char> name(DNS_ENCODED_NAME_SIZE);
    std::vector<unsigned char> query(DNS_QUERY_SIZE);
    const std::size_t written = dns_encode_name(name.data(), host.data());
    require(written > 0 && written <= name.size() && name[written - 1] == 0);
    const std::size_t sent = dns_skip_name(name.data(), written, 0);
    require(dns_build_query(query.data(), 0, host.data(), IPV6) == 12 + sent + 4);
    require(sent > 0 && std::memcmp(query.data() + 12, name.data(), sent) == 0 && name[sent - 1] == 0);

    const std::vector<unsigned char> message(input.begin(), input.end());
    for (std::size_t position = 0; position <= message.size(); ++position)
        require(position + dns_skip_name(message.data(), message.size(), position) <= message.size());
}

void ifconfig_line(const string& input)
{
    const std::vector<char> line = exact_text(input);
    NetConfig config = {};
    const IfconfigItems items = parse_ifconfig_line(line.data(), config);
    require(items.hardware_address == holds(line.data(), "HWaddr "));
    require(items.ipv4_address == holds(line.data(), "inet addr:"));
    require(!items.global_ipv6_address || (holds(line.data(), "inet6 addr:") && holds(line.data(), "Scope:Global")));
    require(is_unset(IPV4, &config.ipv4_addr) || items.ipv4_address);
    require(is_unset(IPV4, &config.ipv4_mask) || holds(line.data(), "Mask:"));
    require(is_unset(IPV6, &config.ipv6_addr) || items.global_ipv6_address);
}

void resolver(const string& input)
{
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        std::vector<unsigned char> servers(MAX_NAME_SERVERS * address_size(family), UNTOUCHED);
        const int count = take_resolver_text(family, reader_of(input), servers.data(), 0);
        require(count >= 0 && count <= 8);
        require_untouched(servers, static_cast<std::size_t>(count) * address_size(family));
        require(take_resolver_text(family, reader_of(input), servers.data(), count) == std::min(8, 2 * count));
    }
}

void routes(const string& input)
{
    const std::vector<char> piece = exact_text(input);
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        std::vector<unsigned char> gateway(16, UNTOUCHED);
        const RouteMatch match = match_route_piece(family, piece.data(), "eth0", gateway.data());
        const std::size_t size = match == RouteMatch::GATEWAY ? address_size(family) : 0;
        require_untouched(gateway, size);
        require(match != RouteMatch::END_OF_TABLE || family == IPV6);
        require(size == 0 || (holds(piece.data(), "eth0") && holds(piece.data(), "3")));
        require(find_gateway(family, reader_of(input), "eth0", gateway.data()) == 1 ||
                input.find("eth0") != string::npos);
    }
}

void split_url(const char* text)
{
    ProbeUrl url;
    std::memset(&url, UNTOUCHED, sizeof url);
    if (!split_probe_url(text, url))
        return;
    require(std::strncmp(text, "http://", 7) == 0 && url.port > 0 && url.path[0] == '/');
    require_text(url.host, 0, "/: \t\n\v\f\r");
    require_text(url.path, 1, " \t\n\v\f\r");
}

void config_file(const string& input)
{
    const ProbeConfig config = parse_probe_config(reader_of(input));
    require_text(config.checkserver, 0, "\r\x0F");
    require_text(config.xmluri, 0, "\r\x0F");
    require(input.find(config.checkserver) != string::npos && input.find(config.xmluri) != string::npos);
    split_url(config.xmluri);
    split_url(exact_text(input).data());
}

void result_file(const string& input)
{
    for (const std::int64_t now : {std::int64_t{0}, std::int64_t{2000000000}, INT64_MAX, INT64_MIN}) {
        std::int64_t stamp;
        std::int64_t age;
        const int code = parse_result(reader_of(input), now, stamp);
        const bool works = family_nibble(IPV4, code) == WORKS || family_nibble(IPV6, code) == WORKS;
        require(code == RESULT_FILE_STALE || without_markers(code) == code);
        require(stamp == 0 || works || code == RESULT_FILE_STALE);
        require(stamp == 0 || (!__builtin_sub_overflow(now, stamp, &age) && age >= 0 && age < 86400));
    }
}

void probe_chunk(const string& input)
{
    const std::vector<char> chunk = exact_text(input.substr(0, PROBE_CHUNK_LENGTH));
    ProbeDocument document;
    if (find_probe_document(chunk.data(), document)) {
        require_text(document.date, 1, "");
        require_text(document.checksum, 1, "");
        require(!holds(document.date, "\">") && !holds(document.checksum, "</checksum>"));
        require(holds(chunk.data(), string("<tolvane date=\"") + document.date));
        require(holds(chunk.data(), string("\t<checksum>") + document.checksum));
    }
    char digest[DIGEST_FIELD_SIZE] = "";
    take_digest(reader_of(input), digest);
    require(digest[0] == '\0' || (std::strlen(digest) == 32 && input.find(digest) != string::npos));
}

void shell_word(const string& input)
{
    const std::vector<char> text = exact_text(input.substr(0, 1000));
    std::vector<char> word(4 * text.size() - 1);
    const std::size_t length = quote_shell_word(text.data(), word.data(), word.size());
    require(length > 0 && length == std::strlen(word.data()));
    std::vector<char> small(length + 4 - text.size() % 8); // about as large as needed
    const std::size_t written = quote_shell_word(text.data(), small.data(), small.size());
    require(written == 0 || (written == length && written < small.size()));
    static unsigned executions = 0; // starting a shell is slow
    if (executions++ % 16 == 0)
        require(shell_output(string("printf '<%s>' ") + word.data()) == string("<") + text.data() + ">");
}

void interface_list(const string& input)
{
    const std::vector<char> list = exact_text(input);
    string kept = ",";
    for (const char* character = list.data(); *character != '\0'; ++character) {
        if ((*character & 0x80) == 0 && (std::isalnum(*character) || std::strchr(",.-/", *character) != nullptr))
            kept += *character;
    }
    ScannedInterface table[MAX_SCANNED_INTERFACES];
    const std::size_t count = split_interface_list(list.data(), table);
    require(count <= MAX_SCANNED_INTERFACES);
    for (std::size_t i = 0; i < count; ++i) {
        require_text(table[i].name, 1, ",");
        require(table[i].status == 0 && holds((kept + ",").c_str(), string(",") + table[i].name + ","));
    }
}

// Arguments end with a zero, as in /proc/PID/cmdline.
void command_line(const string& input)
{
    const string ended = input + '\0';
    const std::vector<char> texts(ended.begin(), ended.end());
    std::vector<const char*> arguments = {"tolvane"};
    for (std::size_t start = 0; start < texts.size(); start += std::strlen(&texts[start]) + 1)
        arguments.push_back(&texts[start]);
    RunOptions run;
    DriverSettings driver;
    parse_command_line(static_cast<int>(arguments.size()), arguments.data(), run, driver);
    require_text(driver.interface_name, 0, "");
    require_text(driver.terminal_list, 0, "");
    require((driver.retry_count == 3 || driver.retry_count == 0) && run.device_class >= 0 && run.device_class <= 5);
    require(run.check_mode == MODE_EVERY_TIME || run.check_mode == MODE_TERMINAL);
    require(run.ipv6_enabled == 1 || (run.ipv4_enabled == 1 && run.ipv6_enabled == 0));
}

const std::map<string, void (*)(const string&)> TARGETS = {
    {"command_line", command_line},   {"config_file", config_file},
    {"dns_name", dns_name},           {"dns_response", dns_response},
    {"ifconfig_line", ifconfig_line}, {"interface_list", interface_list},
    {"probe_chunk", probe_chunk},     {"resolver", resolver},
    {"result_file", result_file},     {"routes", routes},
    {"shell_word", shell_word},
};

void (*run_target)(const string& input);

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    const char* name = std::getenv("FUZZ_TARGET");
    const auto target = TARGETS.find(name != nullptr ? name : "");
    // The usage text, which the command line may print, is not wanted.
    if (target == TARGETS.end() || std::freopen("/dev/null", "w", stdout) == nullptr)
        std::exit(2);
    run_target = target->second;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    run_target(string(data, data + size));
    return 0;
}
