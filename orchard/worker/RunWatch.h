// RunWatch: what a program may learn of the tools that the worker runs, and how it ends them.
#pragma once

#include "CM/platform/ChildProcess.h"
#include "orchard/OrchardApi.h"

#include <functional>
#include <string>

class CStringList;

namespace orchard {

/// How a tool's run came to its end.
struct ToolRun {
    std::string command;
    platform::ChildResult::End end = platform::ChildResult::End::notStarted;
    int code = 0; ///< exit status, signal number, or errno of the failed start
    /// What the tool wrote to its standard output, unless the command redirected it, and to the error channel;
    /// valid during the call only.
    const CStringList *output = nullptr;
    const CStringList *errors = nullptr;
};

/// All members may be left empty. `started` and `ended` are called on the thread that waits for the tool; neither
/// for a run that an interruption has kept from starting.
struct RunWatch {
    std::function<void(const std::string &command)> started;
    std::function<void(const ToolRun &run)> ended;
    /// Asked before a tool is started and some ten times a second while it runs, on any thread. True ends the tool
    /// with all that it has started, and keeps others from starting: their end is `interrupted` too.
    std::function<bool()> interrupted;
};

/// Sets the watch of the process; an empty one takes it away. Not while a tool runs.
ORCHARD_API void setRunWatch(RunWatch watch);
/// The watch in force.
[[nodiscard]] const RunWatch &runWatch();

} // namespace orchard
