#include "dns/dns_query.h"

#include <arpa/inet.h>
#include <net/if.h>
#include <poll.h>
#include <unistd.h>

#include <cstring>

#include "dns/dns_message.h"
#include "dns/source_interface.h"
#include "platform/socket_address.h"
#include "platform/socket_wait.h"

namespace
{

constexpr std::uint16_t DNS_PORT = 53;
constexpr int ANSWER_WAIT_MILLISECONDS = 3000;

bool set_flag(int descriptor, int level, int option)
{
    const int on = 1;
    return setsockopt(descriptor, level, option, &on, sizeof on) == 0;
}

// Binds the socket to the interface, its link-local address and port 53, and gives the server its scope (RFC 4007, 6).
bool bind_to_interface(int descriptor, const char* ifname, SocketAddress& server)
{
    if (!set_flag(descriptor, IPPROTO_IPV6, IPV6_V6ONLY))
        return false;
    char text[INET6_ADDRSTRLEN] = "::";
    find_link_local_addr(ifname, text);
    SocketAddress local = make_socket_address(AddressFamily::IPV6, text, DNS_PORT);
    local.ipv6.sin6_scope_id = if_nametoindex(ifname);
    server.ipv6.sin6_scope_id = local.ipv6.sin6_scope_id;
    return setsockopt(descriptor, SOL_SOCKET, SO_BINDTODEVICE, ifname,
                      static_cast<socklen_t>(std::strlen(ifname) + 1)) == 0 &&
           set_flag(descriptor, SOL_SOCKET, SO_REUSEADDR) && bind(descriptor, &local.generic, local.length) == 0;
}

// A link-local server can be asked through one interface only; any other needs no binding.
bool bind_for_server(int descriptor, char (&ifname)[INTERFACE_NAME_SIZE], SocketAddress& server)
{
    if (server.generic.sa_family != AF_INET6 || !IN6_IS_ADDR_LINKLOCAL(&server.ipv6.sin6_addr) || ifname[0] == '\0')
        return true;
    if (std::strcmp(ifname, NO_INTERFACE_NAMED) == 0)
        pick_ipv6_interface(ifname);
    if (std::strcmp(ifname, NO_INTERFACE_NAMED) == 0)
        return true;
    return bind_to_interface(descriptor, ifname, server);
}

// Waits for datagrams until one holds an address; each of them starts the wait afresh.
bool receive_address(int descriptor, unsigned char (&message)[DNS_MESSAGE_SIZE], AddressFamily family, void* address)
{
    while (wait_for_socket(descriptor, POLLIN, ANSWER_WAIT_MILLISECONDS)) {
        // Should the datagram have been dropped since (a wrong checksum), this does not block.
        const ssize_t size = recv(descriptor, message, sizeof message, MSG_DONTWAIT);
        if (size < 0)
            return false;
        if (dns_find_address(message, static_cast<std::size_t>(size), family, address))
            return true;
    }
    return false;
}

bool exchange(int descriptor, const char* host, const SocketAddress& server, AddressFamily family, void* address)
{
    unsigned char message[DNS_MESSAGE_SIZE];
    const auto id = static_cast<std::uint16_t>(getpid());
    const std::size_t size = dns_build_query(message, id, host, family);
    return sendto(descriptor, message, size, 0, &server.generic, server.length) >= 0 &&
           receive_address(descriptor, message, family, address);
}

} // namespace

int dns_query(const char* host, const char* server, char (&result)[ADDRESS_TEXT_SIZE], AddressFamily family,
              char (&ifname)[INTERFACE_NAME_SIZE])
{
    const AddressFamily server_family = std::strchr(server, ':') != nullptr ? AddressFamily::IPV6 : AddressFamily::IPV4;
    SocketAddress destination = make_socket_address(server_family, server, DNS_PORT);
    const int descriptor = socket(socket_family(server_family), SOCK_DGRAM | SOCK_CLOEXEC, IPPROTO_UDP);
    if (descriptor < 0)
        return -1;
    AnyAddress address;
    const bool found =
        bind_for_server(descriptor, ifname, destination) && exchange(descriptor, host, destination, family, &address);
    close(descriptor);
    if (!found)
        return -1;
    inet_ntop(socket_family(family), &address, result, sizeof result);
    return 0;
}
