// The fault guard: runs a call that may fault on a dead pointer or throw, and survives it.
#pragma once

#include <functional>

namespace platform {

/// Runs `call`. True if it came to its end; false if it threw or faulted (SIGSEGV, SIGBUS, SIGFPE, SIGILL, the
/// end of the stack included). Objects that the call had on its stack are not destroyed after a fault, and locks
/// it held stay locked. Handlers that were set before are in place again afterwards, and receive in the meantime
/// what other threads do. Calls may nest; one thread at a time.
bool runGuarded(const std::function<void()> &call);

} // namespace platform
