#include "netinfo/link_state.h"

#include <sys/stat.h>

#include <cstdio>
#include <cstring>

#include "platform/text_file.h"

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

int get_link_state(const char* name)
{
    char path[256];
    std::snprintf(path, sizeof path, "/sys/class/net/%s/operstate", name);

    struct stat status;
    if (stat(path, &status) != 0 || (status.st_mode & S_IFREG) == 0)
        return -1;
    TextReader reader;
    if (!open_text_file(path, reader))
        return -1;
    const int state = read_link_state(reader);
    close_text_file(reader);
    return state;
}
