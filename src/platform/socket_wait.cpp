#include "platform/socket_wait.h"

#include <poll.h>

bool wait_for_socket(int descriptor, short event, int milliseconds)
{
    // Not select: a careless parent may leave so many descriptors open that the socket lies beyond its sets.
    pollfd entry = {descriptor, event, 0};
    return poll(&entry, 1, milliseconds) > 0;
}
