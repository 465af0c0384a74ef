// The least that any program doing this job can do: the tools and exchanges of one run, nothing parsed or decided.
#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>

#include "dns/dns_message.h"

namespace
{

constexpr char REQUEST[] = "GET /lib/tolvane1.xml HTTP/1.0\r\nHost: " TOLVANE_V4_HOST_B ":80\r\n\r\n";

// Starts a tool, found through PATH, with `input` as its standard input where there is one, and reads what it prints.
// Not popen, which makes a stream and a heap first.
bool read_output(const char* const* words, const char* input)
{
    int given[2] = {-1, -1};
    if (input != nullptr) {
        if (pipe2(given, O_CLOEXEC) != 0 || write(given[1], input, std::strlen(input)) < 0)
            return false;
        close(given[1]);
    }
    int ends[2];
    const pid_t tool = pipe2(ends, O_CLOEXEC) == 0 ? vfork() : -1;
    if (tool == 0) {
        if (input != nullptr)
            dup2(given[0], STDIN_FILENO);
        dup2(ends[1], STDOUT_FILENO);
        execvp(words[0], const_cast<char* const*>(words));
        _exit(127);
    }
    close(given[0]);
    close(ends[1]);
    char output[4096];
    const bool any = read(ends[0], output, sizeof output) > 0;
    while (read(ends[0], output, sizeof output) > 0) {}
    close(ends[0]);
    return waitpid(tool, nullptr, 0) == tool && any;
}

bool run_ifconfig()
{
    const char* const words[] = {"/sbin/ifconfig", "eth0", nullptr};
    return read_output(words, nullptr);
}

bool run_md5sum()
{
    const char* const words[] = {"md5sum", nullptr};
    return read_output(words, "2030-01-31T23:59:59Z");
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
    const std::size_t query_size = dns_build_query(query, 1, TOLVANE_V4_HOST_B, AddressFamily::IPV4);
    const bool done = run_ifconfig() && exchange(SOCK_DGRAM, "198.51.100.53", 53, query, query_size) &&
                      exchange(SOCK_STREAM, "203.0.113.80", 80, REQUEST, sizeof REQUEST - 1) && run_md5sum();
    return done ? 0 : 1;
}
