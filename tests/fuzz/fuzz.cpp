// Fuzzers of everything that reads bytes from outside; the environment variable FUZZ_TARGET names the one to run.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <vector>

#include "cli/result_file.h"
#include "dns/dns_message.h"
#include "netinfo/resolver_files.h"
#include "probe/probe_document.h"
#include "probe/probe_url.h"
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
        require(found ? is_clean(family, address) : is_untouched(address));
        require(!found || memmem(message.data(), message.size(), address.bytes, address_size(family)) != nullptr);
    }
}

void dns_name(const string& input)
{
    const std::vector<char> host = exact_text(input);
    std::vector<unsigned char> name(DNS_ENCODED_NAME_SIZE);
    std::vector<unsigned char> query(DNS_QUERY_SIZE);
    const std::size_t written = dns_encode_name(name.data(), host.data());
    require(written > 0 && written <= name.size() && name[written - 1] == 0);
    require(dns_build_query(query.data(), 0, host.data(), IPV6) <= query.size());

    const std::vector<unsigned char> message(input.begin(), input.end());
    for (std::size_t position = 0; position <= message.size(); ++position)
        require(position + dns_skip_name(message.data(), message.size(), position) <= message.size());
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

void config_file(const string& input)
{
    const ProbeConfig config = parse_probe_config(reader_of(input));
    require(input.find(config.checkserver) != string::npos && input.find(config.xmluri) != string::npos);
    const std::vector<char> text = exact_text(input);
    for (const char* url : {config.xmluri, text.data()}) {
        ProbeUrl parts;
        if (split_probe_url(url, parts))
            require(parts.port > 0 && std::strpbrk(parts.host, "/:") == nullptr && parts.path[0] == '/');
    }
}

void result_file(const string& input)
{
    for (const std::int64_t now : {std::int64_t{0}, std::int64_t{2000000000}, INT64_MAX, INT64_MIN}) {
        std::int64_t stamp;
        std::int64_t age;
        const int code = parse_result(reader_of(input), now, stamp);
        require(code == RESULT_FILE_STALE || without_markers(code) == code);
        require(stamp == 0 || (!__builtin_sub_overflow(now, stamp, &age) && age >= 0 && age < 86400));
    }
}

void probe_chunk(const string& input)
{
    const std::vector<char> chunk = exact_text(input.substr(0, PROBE_CHUNK_LENGTH));
    ProbeDocument document;
    if (find_probe_document(chunk.data(), document))
        require(std::strlen(document.date) > 0 && std::strlen(document.checksum) > 0);
    char digest[DIGEST_FIELD_SIZE] = "";
    take_digest(reader_of(input), digest);
    require(digest[0] == '\0' || (std::strlen(digest) == 32 && input.find(digest) != string::npos));
}

const std::map<string, void (*)(const string&)> TARGETS = {
    {"config_file", config_file}, {"dns_name", dns_name}, {"dns_response", dns_response},
    {"probe_chunk", probe_chunk}, {"resolver", resolver}, {"result_file", result_file},
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    static const auto target = TARGETS.at(std::getenv("FUZZ_TARGET"));
    target(string(data, data + size));
    return 0;
}
