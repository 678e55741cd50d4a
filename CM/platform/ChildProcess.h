// Runs a child process in its own process group and collects its standard output and standard error.
#pragma once

#include "CM/platform/CString.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace platform {

struct ChildResult {
    enum class End { exited, killedBySignal, timedOut, interrupted, notStarted };
    End end = End::notStarted;
    /// The status of an exit, the number of a fatal signal, or the errno of a failed start; else 0. -1 if other
    /// code in this process has already reaped the child.
    int code = 0;
    std::string output; ///< all bytes of standard output
    std::string errors; ///< all bytes of standard error
};

struct ChildOptions {
    /// The time limit of the child. No value means no limit.
    std::optional<std::chrono::milliseconds> limit;
    /// An open file descriptor for standard output, instead of ChildResult::output; -1 for none.
    int outputDescriptor = -1;
    /// Called about ten times a second and after each interrupted wait; true ends the group like a time-out.
    std::function<bool()> interrupted;
};

/// Runs a command and waits for it: directly if plainWords returns words, otherwise with "/bin/sh -c". Uses
/// posix_spawn, so that the cost of starting doesn't depend on the memory size of this process. The child gets its
/// own process group without a terminal (its own session, if this process has a terminal), an empty standard
/// input, no other open descriptor of this process, and all signals at their defaults. Both channels are read
/// concurrently, without limit on size.
///
/// On a time-out or an interruption the whole process group gets SIGTERM and, one second later, SIGKILL, and is
/// reaped; the output so far is kept. If the child has ended but a process of its group still holds a channel, the
/// call waits half a second and then ends the group in the same way; the result is that of the child. A background
/// process that holds no channel continues.
///
/// A program that is missing or can't be executed gives End::notStarted; with a shell, the shell reports it on
/// standard error. A command that contains a NUL is not started (EINVAL).
ChildResult runChild(const std::string &command, const ChildOptions &options = {});

} // namespace platform
