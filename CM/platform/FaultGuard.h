// The fault guard: runs a call that may fault on a dead pointer or throw, and survives it.
#pragma once

#include <functional>

namespace platform {

/// Runs `call`. True if it came to its end; false if it threw or faulted (SIGSEGV, SIGBUS), in which case
/// objects it had on its stack are not destroyed after a fault. Calls may nest; one thread at a time.
bool runGuarded(const std::function<void()> &call);

} // namespace platform
