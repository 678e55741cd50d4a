// For destructors that call the host: it may throw, and a destructor that lets that out ends the process.
#pragma once

namespace core {

/// Runs `call`; what it throws is dropped.
template <class CALL> void quietly(const CALL &call) noexcept {
    try {
        call();
    } catch (...) { // NOLINT(bugprone-empty-catch): there is nobody left to tell
    }
}

} // namespace core
