#include "tessaro/terminal/standard_streams.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <iostream>
#include <unistd.h>

void openStandardStreams() {
    constexpr int ways[] = {O_RDONLY, O_RDONLY, O_WRONLY};  // of standard input, output, error
    for (int descriptor = 0; descriptor < 3; ++descriptor) {
        const bool isClosed = ::fcntl(descriptor, F_GETFD) < 0 && errno == EBADF;
        // The lowest number that is free is the one that is wanted.
        if (isClosed && ::open("/dev/null", ways[descriptor]) < 0) {
            return;
        }
    }
}

bool finishStandardOutput() {
    std::cout.flush();
    return std::fflush(stdout) == 0 && std::cout.good() && std::ferror(stdout) == 0;
}
