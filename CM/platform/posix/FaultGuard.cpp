#include "CM/platform/FaultGuard.h"

#include <array>
#include <csetjmp>
#include <csignal>
#include <cstddef>
#include <memory>

namespace platform {

namespace {

constexpr std::array faults{SIGSEGV, SIGBUS, SIGFPE, SIGILL};
constexpr std::size_t faultStackSize = std::size_t{64} * 1024;

/// An active guarded call; the innermost one of the thread receives its faults.
struct Frame {
    sigjmp_buf back;
    Frame *outer;
};
constinit thread_local Frame *innermost = nullptr;

using Actions = std::array<struct sigaction, faults.size()>;
/// The handlers before the outermost guarded call of the process, for faults of threads that are not guarded.
constinit const Actions *found = nullptr;
/// Whether this thread has installed the handlers.
constinit thread_local bool areInPlace = false;

void onFault(int signal, siginfo_t *info, void * /*context*/) {
    if (Frame *frame = innermost) {
        innermost = frame->outer;
        siglongjmp(frame->back, 1);
    }
    // Not ours: the earlier handler runs when the fault repeats on return; a signal that a process sent does not
    // repeat, and is sent again.
    for (std::size_t index = 0; index < faults.size(); ++index) {
        if (faults[index] == signal && found != nullptr) {
            ::sigaction(signal, &(*found)[index], nullptr);
            if (info->si_code <= 0) {
                ::raise(signal);
            }
        }
    }
}

} // namespace

/// The handlers, and a stack for them if the thread has none, so that a call that has used up its stack can be
/// left too.
class FaultHandlers::Installed {
  public:
    Installed() {
        struct sigaction action {};
        action.sa_sigaction = onFault;
        // Not blocked while it is handled, so that the jump out of the handler has nothing to unblock.
        action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
        sigemptyset(&action.sa_mask);
        stack_t present{};
        if (::sigaltstack(nullptr, &present) == 0 && (present.ss_flags & SS_DISABLE) != 0) {
            memory_ = std::make_unique_for_overwrite<std::byte[]>(faultStackSize);
            stack_t own{};
            own.ss_sp = memory_.get();
            own.ss_size = faultStackSize;
            ::sigaltstack(&own, nullptr);
        }
        for (std::size_t index = 0; index < faults.size(); ++index) {
            ::sigaction(faults[index], &action, &before_[index]);
        }
        if (found == nullptr) {
            found = &before_;
        }
        areInPlace = true;
    }
    ~Installed() {
        areInPlace = false;
        for (std::size_t index = 0; index < faults.size(); ++index) {
            ::sigaction(faults[index], &before_[index], nullptr);
        }
        if (found == &before_) {
            found = nullptr;
        }
        if (memory_) {
            stack_t none{};
            none.ss_flags = SS_DISABLE;
            ::sigaltstack(&none, nullptr);
        }
    }
    Installed(const Installed &) = delete;
    Installed &operator=(const Installed &) = delete;

  private:
    Actions before_{};
    std::unique_ptr<std::byte[]> memory_;
};

FaultHandlers::FaultHandlers() : installed_(areInPlace ? nullptr : std::make_unique<Installed>()) {}

FaultHandlers::~FaultHandlers() = default;

namespace {

/// Separate from the handlers: a function that is the target of a jump must not hold changing variables.
[[gnu::noinline]] bool callInFrame(const std::function<void()> &call, Frame &frame) {
    if (sigsetjmp(frame.back, 0) != 0) {
        return false;
    }
    innermost = &frame;
    try {
        call();
    } catch (...) {
        innermost = frame.outer;
        return false;
    }
    innermost = frame.outer;
    return true;
}

} // namespace

bool runGuarded(const std::function<void()> &call) {
    const FaultHandlers handlers;
    Frame frame{};
    frame.outer = innermost;
    return callInFrame(call, frame);
}

} // namespace platform
