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
    int code = 0;        ///< exit status, signal number, or errno of the failed start
    std::string output;  ///< all that came on standard output, as bytes
    std::string errors;  ///< all that came on standard error, as bytes
};

struct ChildOptions {
    /// No value waits without limit.
    std::optional<std::chrono::milliseconds> limit;
    /// An open file descriptor that standard output goes to instead of ChildResult::output; -1 for none.
    int outputDescriptor = -1;
    /// Asked some ten times a second and after each interrupted wait; true ends the group as a time-out does.
    std::function<bool()> interrupted;
};

/// The words of a command that needs no shell: words, possibly in single or double quotes, without anything
/// that a shell would act on (expansion, redirection, pipes, lists, globs, assignments, reserved words, a
/// builtin as its first word). No value if a shell is needed.
std::optional<std::vector<std::string>> plainWords(std::string_view command);

/// Runs a command to its end: directly where plainWords has an answer, else by "/bin/sh -c". The child starts
/// by posix_spawn with standard input empty, so that the cost of a start doesn't depend on this program's size.
/// Both channels are read at once without limit on size. On a time-out or an interruption the whole process
/// group is ended (SIGTERM, then SIGKILL) and reaped; what had been read is kept. A child that has ended
/// while a process of its group still holds a channel is not waited for beyond a short grace.
ChildResult runChild(const std::string &command, const ChildOptions &options);

} // namespace platform
