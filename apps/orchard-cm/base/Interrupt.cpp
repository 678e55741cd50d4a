#include "apps/orchard-cm/base/Interrupt.h"

#include "apps/orchard-cm/base/ExitCode.h"

#include <csignal>
#include <initializer_list>
#include <unistd.h>

namespace orchard_cm {

namespace {

// A signal handler can reach only static data.
volatile std::sig_atomic_t interrupts = 0; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

extern "C" void onInterrupt(int /*signal*/) {
    interrupts = interrupts + 1;
    if (interrupts > 2) {
        _exit(static_cast<int>(ExitCode::interrupted));
    }
}

} // namespace

void watchForInterrupt() {
    struct sigaction action = {};
    action.sa_handler = onInterrupt;
    sigemptyset(&action.sa_mask);
    action.sa_flags = 0; // a signal also ends a read from the terminal
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
        struct sigaction before = {};
        // A program started with nohup ignores SIGHUP, and keeps running when its terminal closes.
        if (signal == SIGHUP && sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_IGN) {
            continue;
        }
        sigaction(signal, &action, nullptr);
    }
    std::signal(SIGPIPE, SIG_IGN); // a reader that has gone away causes a write error, not a sudden end
}

bool isInterrupted() { return interrupts != 0; }

void setInterrupted(bool interrupted) { interrupts = interrupted ? 1 : 0; }

} // namespace orchard_cm
