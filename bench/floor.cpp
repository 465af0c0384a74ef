// The least that any program doing this job can do: the pipes and exchanges of one run, nothing parsed or decided.
#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "dns/dns_message.h"
#include "probe_hosts.h"

namespace
{

constexpr char REQUEST[] = "GET /lib/tolvane1.xml HTTP/1.0\r\nHost: " TOLVANE_V4_HOST_B ":80\r\n\r\n";

// Not popen, which makes a stream and a heap first.
bool read_output(const char* command)
{
    int ends[2];
    const pid_t shell = pipe2(ends, O_CLOEXEC) == 0 ? vfork() : -1;
    if (shell == 0) {
        dup2(ends[1], STDOUT_FILENO);
        execl("/bin/sh", "sh", "-c", command, static_cast<char*>(nullptr));
        _exit(127);
    }
    close(ends[1]);
    char output[4096];
    const bool any = read(ends[0], output, sizeof output) > 0;
    while (read(ends[0], output, sizeof output) > 0) {}
    close(ends[0]);
    return waitpid(shell, nullptr, 0) == shell && any;
}

bool exchange(int type, const char* address, std::uint16_t port, const void* request, std::size_t length)
{
    sockaddr_in server = {};
    server.sin_family = AF_INET;
    server.sin_port = htons(port);
    server.sin_addr.s_addr = inet_addr(address);
    const int descriptor = socket(AF_INET, type, 0);
    char answer[1024];
    const bool answered = connect(descriptor, reinterpret_cast<const sockaddr*>(&server), sizeof server) == 0 &&
                          send(descriptor, request, length, 0) > 0 && recv(descriptor, answer, sizeof answer, 0) > 0;
    close(descriptor);
    return answered;
}

} // namespace

int main()
{
    unsigned char query[DNS_QUERY_SIZE];
    const std::size_t query_size = dns_build_query(query, 1, V4_HOST_B, AddressFamily::IPV4);
    const bool done = read_output("LANG=C /sbin/ifconfig 'eth0'") &&
                      exchange(SOCK_DGRAM, "198.51.100.53", 53, query, query_size) &&
                      exchange(SOCK_STREAM, "203.0.113.80", 80, REQUEST, sizeof REQUEST - 1) &&
                      read_output("printf %s '2030-01-31T23:59:59Z' | md5sum");
    return done ? 0 : 1;
}
