#include "providers/subversion/BrokenPipe.h"

#include <ctime>

namespace svnscc {

namespace {

sigset_t pipeSignal() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGPIPE);
    return set;
}

bool isPending() {
    sigset_t pending;
    sigemptyset(&pending);
    sigpending(&pending);
    return sigismember(&pending, SIGPIPE) == 1;
}

} // namespace

BrokenPipe::BrokenPipe() {
    const sigset_t set = pipeSignal();
    wasPending_ = isPending();
    pthread_sigmask(SIG_BLOCK, &set, &before_);
}

BrokenPipe::~BrokenPipe() {
    if (!wasPending_ && isPending()) {
        const sigset_t set = pipeSignal();
        const timespec now{};
        sigtimedwait(&set, nullptr, &now);
    }
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

} // namespace svnscc
