// The host program. It knows the host, the plant platform and the forms; the product is the module that it loads.
#include "tessaro/command_line.h"
#include "tessaro/terminal/standard_streams.h"

#include <csignal>
#include <cstdio>
#include <exception>

int main(int argc, char** argv) {
    openStandardStreams();
    // Both then come as errors of the write, which are told with the file's name.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return static_cast<int>(CommandLine().main(argc, argv));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tessaro: %s\n", error.what());
        return static_cast<int>(ExitStatus::Failed);
    }
}
