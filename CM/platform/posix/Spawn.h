// Starting a process: posix_spawn with the descriptors and signals that a CM tool is to find.
#pragma once

#include "CM/platform/posix/Descriptor.h"

#include <string>
#include <vector>

#include <sys/types.h>

namespace platform::posix {

/// Both ends of a pipe; neither is inherited by a child, and neither is one of the standard descriptors.
struct Pipe {
    Descriptor reading;
    Descriptor writing;
    /// False with errno set if no pipe is to be had.
    bool open();
};

/// Starts a program in a process group of its own, without a terminal to ask on (in a session of its own, if this
/// process has a terminal), so that a tool that wants a password fails at once and doesn't wait for keys that
/// can't come. It finds an empty standard input, `output` and `errors` as its channels, no other descriptor of
/// this process, and every signal at its default and unblocked. The program is looked for as a shell does. Returns
/// 0 and the process, or an errno.
int spawn(const std::vector<std::string> &words, int output, int errors, pid_t &process);

} // namespace platform::posix
