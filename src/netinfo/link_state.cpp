#include "netinfo/link_state.h"

#include <cstdio>
#include <cstring>

#include "platform/text_io.h"

namespace
{

constexpr std::size_t STATE_LINE_SIZE = 256;
constexpr std::size_t STATE_PATH_SIZE = 256;

int read_link_state(TextReader& reader)
{
    char line[STATE_LINE_SIZE];
    if (!read_piece(reader, line))
        return -1;
    if (std::strncmp(line, "up", 2) == 0)
        return 1;
    if (std::strncmp(line, "down", 4) == 0)
        return 0;
    return -1;
}

} // namespace

int get_link_state(const char* interface_name)
{
    char path[STATE_PATH_SIZE];
    std::snprintf(path, sizeof path, "/sys/class/net/%s/operstate", interface_name);

    // A listed name may hold "/" and "..", so the path may lead anywhere.
    TextReader reader;
    if (!open_regular_file(path, reader))
        return -1;
    const int state = read_link_state(reader);
    close_text_file(reader);
    return state;
}
