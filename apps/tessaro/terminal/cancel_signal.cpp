#include "tessaro/terminal/cancel_signal.h"

#include <csignal>

namespace {

volatile std::sig_atomic_t wished = 0;

void onInterrupt(int) {
    wished = 1;
}

}  // namespace

void catchInterrupt() {
    struct sigaction action {};
    action.sa_handler = onInterrupt;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    ::sigaction(SIGINT, &action, nullptr);
}

bool interrupted() {
    return wished != 0;
}
