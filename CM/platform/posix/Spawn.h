// Starts a process by posix_spawn with the descriptors and signals for a CM tool.
#pragma once

#include "CM/platform/posix/Descriptor.h"

#include <string>
#include <vector>

#include <sys/types.h>

namespace platform::posix {

/// Both ends of a pipe; no child inherits them, and neither is one of the standard descriptors.
struct Pipe {
    Descriptor reading;
    Descriptor writing;
    /// Returns false with errno set on failure.
    bool open();
};

/// Starts a program in its own process group, without a terminal (in its own session, if this process has a
/// terminal), so that a tool that asks for a password fails at once instead of waiting for input that can't
/// arrive. It gets an empty standard input, `output` and `errors` as its channels, no other descriptor of this
/// process, and every signal at its default and unblocked. The program is searched for as by a shell. Returns 0
/// and the process, or an errno.
int spawn(const std::vector<std::string> &words, int output, int errors, pid_t &process);

} // namespace platform::posix
