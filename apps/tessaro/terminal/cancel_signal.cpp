#include "tessaro/terminal/cancel_signal.h"

#include <csignal>
#include <initializer_list>

namespace {

volatile std::sig_atomic_t wished = 0;

void onSignal(int) {
    wished = 1;
}

bool isIgnored(int signal) {
    struct sigaction action {};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

void catchCancelSignals() {
    struct sigaction action {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        if (signal != SIGHUP || !isIgnored(signal)) {
            ::sigaction(signal, &action, nullptr);
        }
    }
}

bool cancelSignalled() {
    return wished != 0;
}
