#include "apps/orchard-cm/base/Interrupt.h"

#include "apps/orchard-cm/base/ExitCode.h"

#include <csignal>
#include <initializer_list>
#include <unistd.h>

namespace orchard_cm {

namespace {

// A signal handler can reach nothing but what is static.
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
    action.sa_flags = 0; // a read of the terminal ends too
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
        struct sigaction before = {};
        // Who was told not to hear of its terminal's end (nohup) goes on.
        if (signal == SIGHUP && sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_IGN) {
            continue;
        }
        sigaction(signal, &action, nullptr);
    }
    std::signal(SIGPIPE, SIG_IGN); // a reader that has gone away is a write error, no sudden end
}

bool isInterrupted() { return interrupts != 0; }

void setInterrupted(bool interrupted) { interrupts = interrupted ? 1 : 0; }

} // namespace orchard_cm
