#include "netinfo/link_state.h"

#include <cstdio>
#include <cstring>

#include "platform/text_io.h"

namespace
{

int read_link_state(TextReader& reader)
{
    char line[256];
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
    char path[256];
    std::snprintf(path, sizeof path, "/sys/class/net/%s/operstate", interface_name);

    // A listed name may hold "/" and "..", so the path may lead anywhere.
    TextReader reader;
    if (!open_regular_file(path, reader))
        return -1;
    const int state = read_link_state(reader);
    close_text_file(reader);
    return state;
}
