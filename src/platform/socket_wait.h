// The wait for one socket.
#pragma once

// Sleeps until the socket is readable (POLLIN) or writable (POLLOUT), or has failed. Returns false when the time in
// milliseconds passed first or waiting was impossible.
bool wait_for_socket(int descriptor, short event, int milliseconds);
