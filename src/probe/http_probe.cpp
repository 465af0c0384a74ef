#include "probe/http_probe.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <ctime>

#include "dns/name_servers.h"
#include "platform/socket_address.h"
#include "platform/socket_wait.h"
#include "probe/ipv4_address_class.h"
#include "probe/probe_document.h"
#include "probe/probe_targets.h"
#include "probe_hosts.h"
#include "result_code.h"

namespace
{

constexpr int CONNECT_WAIT_MILLISECONDS = 3000;
constexpr int RECEIVE_WAIT_MILLISECONDS = 5000; // for the whole answer
constexpr std::size_t REQUEST_SIZE = 2 * URL_WORD_SIZE + 64;

// How an attempt ended: the outcome it stands for, and what may follow it.
struct AttemptEnd {
    int outcome;
    bool may_retry;
    bool may_fall_back;
};

constexpr AttemptEnd VERIFIED = {WORKS, false, false};
constexpr AttemptEnd NOT_RESOLVED = {DNS_QUERY_FAILED, false, true};
constexpr AttemptEnd NO_SOCKET = {CONNECTION_FAILED, false, false};
constexpr AttemptEnd NOT_CONNECTED = {CONNECTION_FAILED, true, true};
constexpr AttemptEnd NOT_VERIFIED = {DOCUMENT_MISMATCH, true, true};
constexpr AttemptEnd NOT_VERIFIED_AT_PRIVATE_ADDRESS = {DNS_QUERY_FAILED, true, true};
constexpr AttemptEnd NO_SERVER_TO_ASK = {NO_NAME_SERVER, false, false};
constexpr AttemptEnd URL_REFUSED = {DOCUMENT_MISMATCH, false, false};

bool connect_in_time(int descriptor, const SocketAddress& server)
{
    if (connect(descriptor, &server.generic, server.length) == 0)
        return true;
    if (errno != EINPROGRESS || !wait_for_socket(descriptor, POLLOUT, CONNECT_WAIT_MILLISECONDS))
        return false;
    // The second call tells how the first one ended.
    return connect(descriptor, &server.generic, server.length) != -1;
}

long long milliseconds_now()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1000LL + now.tv_nsec / 1000000;
}

// A request that does not go out shows as a missing document.
void send_request(int descriptor, const ProbeUrl& url)
{
    char request[REQUEST_SIZE];
    const int length =
        std::snprintf(request, sizeof request, "GET %s HTTP/1.0\r\nHost: %s:%d\r\n\r\n", url.path, url.host, url.port);
    send(descriptor, request, static_cast<std::size_t>(length), 0);
}

// Reads until a chunk verifies, the server closes, or the time is over. Each chunk is examined alone.
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
            continue; // an error is reported once; behind it the connection is found closed
        if (count == 0)
            return false;
        chunk[count] = '\0';
        if (verify_probe_chunk(chunk))
            return true;
    }
}

// Connects a fresh socket to the address and fetches the document through it.
AttemptEnd fetch_document(int descriptor, AddressFamily family, const char* answer, const ProbeUrl& url)
{
    if (fcntl(descriptor, F_SETFL, O_NONBLOCK) < 0)
        return NO_SOCKET;
    if (!connect_in_time(descriptor, make_socket_address(family, answer, HTTP_PORT)))
        return NOT_CONNECTED;
    send_request(descriptor, url);
    const bool verified = receive_document(descriptor);
    fcntl(descriptor, F_SETFL, 0);
    return verified ? VERIFIED : NOT_VERIFIED;
}

bool is_private_ipv4(const char* answer)
{
    const Ipv4AddressClass address_class = classify_ipv4_address(answer);
    return address_class == ADDR_PRIVATE_10 || address_class == ADDR_PRIVATE_172 || address_class == ADDR_PRIVATE_192;
}

AttemptEnd attempt_probe(AddressFamily family, const ProbeUrl& url, const NameServerList& name_servers,
                         char (&interface_name)[INTERFACE_NAME_SIZE])
{
    char answer[ADDRESS_TEXT_SIZE];
    switch (resolve_host(url.host, family, name_servers, answer, interface_name)) {
    case Resolution::NO_NAME_SERVER:
        return NO_SERVER_TO_ASK;
    case Resolution::FAILED:
        return NOT_RESOLVED;
    case Resolution::FOUND:
        break;
    }
    const int descriptor = socket(socket_family(family), SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return NO_SOCKET;
    const AttemptEnd end = fetch_document(descriptor, family, answer, url);
    close(descriptor);
    // A private address that serves no document is a name server's invention (a captive portal, a filter).
    if (end.outcome == DOCUMENT_MISMATCH && family == AddressFamily::IPV4 && is_private_ipv4(answer))
        return NOT_VERIFIED_AT_PRIVATE_ADDRESS;
    return end;
}

// Makes attempts until one succeeds, none may follow, or the budget is spent.
AttemptEnd probe_target(AddressFamily family, int device_class, int tries, char (&interface_name)[INTERFACE_NAME_SIZE])
{
    ProbeUrl url;
    if (!select_probe_target(family, device_class, url))
        return URL_REFUSED;
    const NameServerList name_servers = collect_name_servers(family);
    AttemptEnd end;
    do {
        if (tries > 0)
            --tries;
        end = attempt_probe(family, url, name_servers, interface_name);
    } while (end.may_retry && tries > 0);
    return end;
}

} // namespace

int probe_server(AddressFamily family, int device_class, int tries, char (&interface_name)[INTERFACE_NAME_SIZE])
{
    AttemptEnd end = probe_target(family, device_class, tries, interface_name);
    if (end.may_fall_back && device_class != DEVICE_CLASS_CONFIG && probe_config_present())
        end = probe_target(family, DEVICE_CLASS_CONFIG, 0, interface_name);
    return end.outcome == NO_NAME_SERVER ? -1 : family_code(family, end.outcome);
}
