// Runs a call that may fault on a pointer to a destroyed object or throw, and survives it.
#pragma once

#include <functional>
#include <memory>

namespace platform {

/// Runs `call`. Returns true if it returned, false if it threw or faulted (SIGSEGV, SIGBUS, SIGFPE, SIGILL; a
/// stack overflow, too). After a fault, objects on the stack of the call are not destroyed, and its locks remain
/// locked. Earlier handlers are restored afterwards, and receive the faults of other threads in the meantime.
/// Calls may nest: an inner one relies on the handlers of the outer one. Only one thread may use it at a time.
bool runGuarded(const std::function<void()> &call);

/// Keeps the handlers of runGuarded installed as long as it exists, for the thread that creates it: many guarded
/// calls in a row then need no system call. It guards nothing itself: a fault outside a guarded call goes to the
/// earlier handlers.
class FaultHandlers {
  public:
    FaultHandlers();
    ~FaultHandlers();
    FaultHandlers(const FaultHandlers &) = delete;
    FaultHandlers &operator=(const FaultHandlers &) = delete;

  private:
    class Installed;
    std::unique_ptr<Installed> installed_; ///< null if another instance has already installed the handlers
};

} // namespace platform
