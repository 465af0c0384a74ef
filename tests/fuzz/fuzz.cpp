// Fuzzers of everything that reads bytes from outside; the environment variable FUZZ_TARGET names the one to run.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <vector>

#include "cli/result_file.h"
#include "dns/dns_message.h"
#include "netinfo/default_routes.h"
#include "netinfo/ifconfig.h"
#include "netinfo/resolver_files.h"
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

// The text up to its first zero, in a heap block that ends after that zero: a read past it is seen.
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

constexpr IpAddress UNTOUCHED = {AddressFamily::IPV6, {0xA5, 0xA5, 0xA5, 0xA5}};

bool is_untouched(const IpAddress& address)
{
    return std::memcmp(&address, &UNTOUCHED, sizeof address) == 0;
}

// Of the family, and zero after its bytes.
bool is_clean(AddressFamily family, const IpAddress& address)
{
    for (std::size_t i = address_size(family); i < sizeof address.bytes; ++i)
        require(address.bytes[i] == 0);
    return address.family == family;
}

void dns_response(const string& input)
{
    const std::vector<unsigned char> message(input.begin(), input.end());
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        IpAddress address = UNTOUCHED;
        const bool found = dns_find_address(message.data(), message.size(), family, address);
        require(found || is_untouched(address));
        require(!found || memmem(message.data(), message.size(), address.bytes, address_size(family)) != nullptr);
        require(!found || is_clean(family, address));
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
    require(is_unset(config.ipv4_addr) || items.ipv4_address);
    require(is_unset(config.ipv4_mask) || holds(line.data(), "Mask:"));
    require(is_unset(config.ipv6_addr) || items.global_ipv6_address);
}

void resolver(const string& input)
{
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        NameServerSlots servers;
        std::fill(std::begin(servers), std::end(servers), UNTOUCHED);
        const int count = take_resolver_text(family, reader_of(input), servers, 0);
        require(count >= 0 && count <= 8);
        for (int i = 0; i < 8; ++i)
            require(is_untouched(servers[i]) || (i < count && is_clean(family, servers[i])));
        require(take_resolver_text(family, reader_of(input), servers, count) == std::min(8, 2 * count));
    }
}

void routes(const string& input)
{
    for (const AddressFamily family : ADDRESS_FAMILIES) {
        IpAddress gateway = UNTOUCHED;
        const bool found = find_gateway(family, reader_of(input), {"eth0"}, gateway);
        require(found || is_untouched(gateway));
        require(!found || (is_clean(family, gateway) && input.find("eth0") != string::npos));
        require(!found || input.find('3') != string::npos);
    }
}

void split_url(const char* text)
{
    ProbeUrl url;
    std::memset(&url, 0xA5, sizeof url);
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
        const bool works = family_outcome(IPV4, code) == WORKS || family_outcome(IPV6, code) == WORKS;
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

const std::map<string, void (*)(const string&)> TARGETS = {
    {"config_file", config_file},     {"dns_name", dns_name},       {"dns_response", dns_response},
    {"ifconfig_line", ifconfig_line}, {"probe_chunk", probe_chunk}, {"resolver", resolver},
    {"result_file", result_file},     {"routes", routes},
};

void (*run_target)(const string& input);

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    const char* name = std::getenv("FUZZ_TARGET");
    const auto target = TARGETS.find(name != nullptr ? name : "");
    if (target == TARGETS.end())
        std::exit(2);
    run_target = target->second;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    run_target(string(data, data + size));
    return 0;
}
