// The fault guard: runs a call that may fault on a dead pointer or throw, and survives it.
#pragma once

#include <functional>
#include <memory>

namespace platform {

/// Runs `call`. True if it came to its end; false if it threw or faulted (SIGSEGV, SIGBUS, SIGFPE, SIGILL, the
/// end of the stack included). Objects that the call had on its stack are not destroyed after a fault, and locks
/// it held stay locked. Handlers that were set before are in place again afterwards, and receive in the meantime
/// what other threads do. Calls may nest, and an inner one relies on the handlers of the outer one; one thread at
/// a time.
bool runGuarded(const std::function<void()> &call);

/// Keeps the handlers of runGuarded in place for its life, on the thread that makes it: for many guarded calls in
/// a row, which then cost no call of the system. It guards nothing itself: a fault outside a guarded call goes to
/// the handlers that were set before.
class FaultHandlers {
  public:
    FaultHandlers();
    ~FaultHandlers();
    FaultHandlers(const FaultHandlers &) = delete;
    FaultHandlers &operator=(const FaultHandlers &) = delete;

  private:
    class Installed;
    std::unique_ptr<Installed> installed_; ///< null inside of another one, whose handlers are in place
};

} // namespace platform
