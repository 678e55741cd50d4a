#include "apps/orchard-cm/base/Interrupt.h"

#include "apps/orchard-cm/base/ExitCode.h"

#include <csignal>
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
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN); // a reader that has gone away is a write error, no sudden end
}

bool isInterrupted() { return interrupts != 0; }

void setInterrupted(bool interrupted) { interrupts = interrupted ? 1 : 0; }

} // namespace orchard_cm
