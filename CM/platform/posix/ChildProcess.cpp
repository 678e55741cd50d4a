#include "CM/platform/ChildProcess.h"

#include "CM/platform/PlainWords.h"
#include "CM/platform/posix/RunningChild.h"

#include <cerrno>

namespace platform {

namespace {

// The "--" keeps a command that starts with a dash from being read as an option.
std::vector<std::string> byShell(const std::string &command) { return {"/bin/sh", "-c", "--", command}; }

} // namespace

ChildResult runChild(const std::string &command, const ChildOptions &options) {
    posix::RunningChild child(options);
    int failure = EINVAL;
    if (command.find('\0') == std::string::npos) {
        const auto words = plainWords(command);
        failure = words ? child.start(*words) : child.start(byShell(command));
        if (words && failure == ENOEXEC) {
            failure = child.start(byShell(command)); // a script without a first line that names its interpreter
        }
    }
    if (failure != 0) {
        ChildResult result;
        result.code = failure;
        return result;
    }
    return child.collect();
}

} // namespace platform
