// Swallows exceptions from calls to the host in destructors, where an exception would terminate the process.
#pragma once

namespace core {

/// Runs `call` and ignores any exception.
template <class CALL> void quietly(const CALL &call) noexcept {
    try {
        call();
    } catch (...) { // NOLINT(bugprone-empty-catch): a destructor can report nothing
    }
}

} // namespace core
