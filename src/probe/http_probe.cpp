#include "probe/http_probe.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <ctime>

#include "dns/name_servers.h"
#include "platform/sockets.h"
#include "probe/probe_document.h"
#include "probe/probe_targets.h"
#include "probe_hosts.h"
#include "result_code.h"

namespace
{

constexpr int CONNECT_WAIT_MILLISECONDS = 3000;
constexpr int RECEIVE_WAIT_MILLISECONDS = 5000; // for the whole document
constexpr std::size_t REQUEST_SIZE = 2 * URL_WORD_SIZE + 64;

// How an attempt ended: its outcome, and what may follow it.
struct AttemptEnd {
    FamilyOutcome outcome;
    bool may_retry;
    bool may_fall_back;
};

constexpr AttemptEnd VERIFIED = {WORKS, false, false};
constexpr AttemptEnd NOT_RESOLVED = {DNS_QUERY_FAILED, false, true};
constexpr AttemptEnd NO_SOCKET = {CONNECTION_FAILED, false, false};
constexpr AttemptEnd NOT_CONNECTED = {CONNECTION_FAILED, true, true};
constexpr AttemptEnd NOT_VERIFIED = {DOCUMENT_MISMATCH, true, true};
constexpr AttemptEnd NOT_VERIFIED_AT_PRIVATE_ADDRESS = {DNS_QUERY_FAILED, true, true};
constexpr AttemptEnd NO_SERVER_TO_ASK = {NO_USABLE_NAME_SERVER, false, false};
constexpr AttemptEnd URL_REFUSED = {DOCUMENT_MISMATCH, false, false};

bool connect_in_time(int descriptor, const SocketAddress& server)
{
    if (connect(descriptor, &server.generic, server.length) == 0)
        return true;
    if (errno != EINPROGRESS || !wait_for_socket(descriptor, POLLOUT, CONNECT_WAIT_MILLISECONDS))
        return false;
    // The second call reports how the first one ended.
    return connect(descriptor, &server.generic, server.length) != -1;
}

long long milliseconds_now()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1000LL + now.tv_nsec / 1000000;
}

// A failed send shows up later as a missing document.
void send_request(int descriptor, const ProbeUrl& url)
{
    char request[REQUEST_SIZE];
    const int length =
        std::snprintf(request, sizeof request, "GET %s HTTP/1.0\r\nHost: %s:%d\r\n\r\n", url.path, url.host, url.port);
    send(descriptor, request, static_cast<std::size_t>(length), 0);
}

// Reads until a chunk verifies, the server closes the connection, or the time is over. Chunks are not joined.
bool receive_document(int descriptor)
{
    const long long end = milliseconds_now() + RECEIVE_WAIT_MILLISECONDS;
    for (;;) {
        const long long left = end - milliseconds_now();
        if (left <= 0 || !wait_for_socket(descriptor, POLLIN, static_cast<int>(left)))
            return false;
        char chunk[PROBE_CHUNK_LENGTH + 1];
        const ssize_t count = recv(descriptor, chunk, PROBE_CHUNK_LENGTH, 0);
        if (count < 0)
            continue; // an error is reported once; the next read finds the connection closed
        if (count == 0)
            return false;
        chunk[count] = '\0';
        if (verify_probe_chunk(chunk))
            return true;
    }
}

// Connects a fresh socket to the address and fetches the document through it.
AttemptEnd fetch_document(int descriptor, const IpAddress& answer, const ProbeUrl& url)
{
    if (!connect_in_time(descriptor, make_socket_address(answer, HTTP_PORT)))
        return NOT_CONNECTED;
    send_request(descriptor, url);
    return receive_document(descriptor) ? VERIFIED : NOT_VERIFIED;
}

AttemptEnd fetch_from_address(const IpAddress& answer, const ProbeUrl& url)
{
    const int descriptor = socket(socket_family(answer.family), SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return NO_SOCKET;
    const AttemptEnd end = fetch_document(descriptor, answer, url);
    close(descriptor);
    // A private address that serves no document was made up by the name server (a captive portal, a filter).
    if (end.outcome == DOCUMENT_MISMATCH && is_private_ipv4(answer))
        return NOT_VERIFIED_AT_PRIVATE_ADDRESS;
    return end;
}

AttemptEnd make_attempt(AddressFamily family, const ProbeUrl& url, const NameServerList& name_servers,
                        InterfaceName& interface_name)
{
    IpAddress answer;
    switch (resolve_host(url.host, family, name_servers, answer, interface_name)) {
    case Resolution::NO_NAME_SERVER:
        return NO_SERVER_TO_ASK;
    case Resolution::FAILED:
        return NOT_RESOLVED;
    case Resolution::FOUND:
        break;
    }
    return fetch_from_address(answer, url);
}

// Repeats the attempt while its end allows another and attempts are left.
AttemptEnd probe_target(AddressFamily family, int device_class, int attempts, InterfaceName& interface_name)
{
    ProbeUrl url;
    if (!select_probe_target(family, device_class, url))
        return URL_REFUSED;
    const NameServerList name_servers = collect_name_servers(family);
    AttemptEnd end;
    do
        end = make_attempt(family, url, name_servers, interface_name);
    while (end.may_retry && --attempts > 0);
    return end;
}

} // namespace

int probe_server(AddressFamily family, int device_class, int attempts, InterfaceName& interface_name)
{
    AttemptEnd end = probe_target(family, device_class, attempts, interface_name);
    if (end.may_fall_back && probe_config_present())
        end = probe_target(family, DEVICE_CLASS_CONFIG, 1, interface_name);
    // Both nibbles of -1 are NO_USABLE_NAME_SERVER.
    return end.outcome == NO_USABLE_NAME_SERVER ? -1 : family_code(family, end.outcome);
}
