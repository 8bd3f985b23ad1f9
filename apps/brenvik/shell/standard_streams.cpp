// File numbers 0 to 2, on systems where an open file gets the lowest free one.
#include "shell/standard_streams.h"

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace brenvik::app {

void OpenStandardStreams() {
#ifndef _WIN32
    for (int number = STDIN_FILENO; number <= STDERR_FILENO; ++number) {
        if (fcntl(number, F_GETFD) != -1) continue;
        // For reading alone, so that what is written fails, and is known to be lost.
        const int opened = open("/dev/null", O_RDONLY);
        if (opened == -1 || opened == number) continue;
        dup2(opened, number);
        close(opened);
    }
#endif
}

}  // namespace brenvik::app
