#include "dns/dns_query.h"

#include <net/if.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "dns/dns_message.h"
#include "dns/source_interface.h"
#include "platform/sockets.h"

namespace
{

constexpr std::uint16_t DNS_PORT = 53;
constexpr int RESPONSE_WAIT_MILLISECONDS = 3000;

// The query, then each datagram that arrives. Not on the stack, which may be small.
unsigned char message[DNS_MESSAGE_SIZE];

bool set_flag(int descriptor, int level, int option)
{
    const int on = 1;
    return setsockopt(descriptor, level, option, &on, sizeof on) == 0;
}

bool bind_to_device(int descriptor, const char* interface_name)
{
    const auto length = static_cast<socklen_t>(std::strlen(interface_name) + 1);
    return setsockopt(descriptor, SOL_SOCKET, SO_BINDTODEVICE, interface_name, length) == 0;
}

// Binds the socket to the interface, its link-local address (:: if it has none) and port 53, and sets the scope of the
// server's address (RFC 4007, 6).
bool bind_to_interface(int descriptor, const char* interface_name, SocketAddress& server)
{
    if (!set_flag(descriptor, IPPROTO_IPV6, IPV6_V6ONLY))
        return false;
    IpAddress link_local;
    if (find_link_local_addr(interface_name, link_local) != 0)
        link_local = {AddressFamily::IPV6, {}};
    SocketAddress local = make_socket_address(link_local, DNS_PORT);
    local.ipv6.sin6_scope_id = if_nametoindex(interface_name);
    server.ipv6.sin6_scope_id = local.ipv6.sin6_scope_id;
    return bind_to_device(descriptor, interface_name) && set_flag(descriptor, SOL_SOCKET, SO_REUSEADDR) &&
           bind(descriptor, &local.generic, local.length) == 0;
}

bool names_no_interface(const InterfaceName& interface_name)
{
    return std::strcmp(interface_name.text, NO_INTERFACE_NAMED) == 0;
}

// Only a link-local server needs a certain interface. Returns false if the socket cannot be bound to it.
bool bind_for_server(int descriptor, InterfaceName& interface_name, SocketAddress& server)
{
    if (server.generic.sa_family != AF_INET6 || !IN6_IS_ADDR_LINKLOCAL(&server.ipv6.sin6_addr) ||
        interface_name.text[0] == '\0')
        return true;
    if (names_no_interface(interface_name) &&
        (pick_ipv6_interface(interface_name) != 0 || names_no_interface(interface_name)))
        return true;
    return bind_to_interface(descriptor, interface_name.text, server);
}

// Waits for datagrams until one holds an address. Each datagram starts the wait afresh.
bool receive_address(int descriptor, AddressFamily family, IpAddress& address)
{
    while (wait_for_socket(descriptor, POLLIN, RESPONSE_WAIT_MILLISECONDS)) {
        const ssize_t size = recv(descriptor, message, sizeof message, MSG_DONTWAIT);
        if (size < 0 && errno == EAGAIN)
            continue; // the kernel has dropped the datagram since (a wrong checksum)
        if (size < 0)
            return false;
        if (dns_find_address(message, static_cast<std::size_t>(size), family, address))
            return true;
    }
    return false;
}

bool exchange(int descriptor, const char* host, const SocketAddress& server, AddressFamily family, IpAddress& address)
{
    const auto id = static_cast<std::uint16_t>(getpid());
    const std::size_t size = dns_build_query(message, id, host, family);
    return sendto(descriptor, message, size, 0, &server.generic, server.length) >= 0 &&
           receive_address(descriptor, family, address);
}

} // namespace

int dns_query(const char* host, const IpAddress& server, IpAddress& result, AddressFamily family,
              InterfaceName& interface_name)
{
    SocketAddress destination = make_socket_address(server, DNS_PORT);
    const int descriptor = socket(socket_family(server.family), SOCK_DGRAM | SOCK_CLOEXEC, IPPROTO_UDP);
    if (descriptor < 0)
        return -1;
    const bool found = bind_for_server(descriptor, interface_name, destination) &&
                       exchange(descriptor, host, destination, family, result);
    close(descriptor);
    return found ? 0 : -1;
}
