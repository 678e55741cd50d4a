// A child process in a process group of its own, with both its output channels collected.
#pragma once

#include "CM/platform/CString.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct ChildResult {
    enum class End { exited, killedBySignal, timedOut, interrupted, notStarted };
    End end = End::notStarted;
    /// Of an exit its status, of a death by signal the signal's number, of a failed start its errno; else 0.
    /// -1 for an exit whose status somebody else in this process has collected.
    int code = 0;
    std::string output; ///< all that came on standard output, as bytes
    std::string errors; ///< all that came on standard error, as bytes
};

struct ChildOptions {
    /// How long the child may run. No value waits without limit.
    std::optional<std::chrono::milliseconds> limit;
    /// An open file descriptor that standard output goes to instead of ChildResult::output; -1 for none.
    int outputDescriptor = -1;
    /// Asked some ten times a second and after each interrupted wait; true ends the group as a time-out does.
    std::function<bool()> interrupted;
};

/// The words of a command that needs no shell: words, possibly in single or double quotes, without anything
/// that a shell would act on (expansion, redirection, pipes, lists, globs, assignments, reserved words, a
/// builtin as its first word). No value if a shell is needed, which includes a command without any word and one
/// whose quotes don't close.
std::optional<std::vector<std::string>> plainWords(std::string_view command);

/// Runs a command to its end: directly where plainWords has an answer, else by "/bin/sh -c". The child starts
/// by posix_spawn, so that the cost of a start doesn't depend on this program's size, in a process group of its
/// own without a terminal (in a session of its own, if this process has a terminal), with an empty standard input,
/// no other open descriptor of this process, and all signals at their defaults. Both channels are read at once
/// without limit on size.
///
/// On a time-out or an interruption the whole process group is ended (SIGTERM, after a second SIGKILL) and
/// reaped; what had been read is kept. A child that has ended while a process of its group still holds a channel
/// is waited for half a second longer; then the group is ended the same way, and the child's own end is told. A
/// process left behind that holds no channel is left alone.
///
/// A program that isn't there or can't be executed is End::notStarted; a shell, where one is needed, says so
/// itself on the error channel. A command that holds a NUL is not started (EINVAL).
ChildResult runChild(const std::string &command, const ChildOptions &options = {});

} // namespace platform
