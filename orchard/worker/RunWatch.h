// Lets a program observe the tools that the worker runs, and end them.
#pragma once

#include "CM/host/RunThread.h"
#include "orchard/OrchardApi.h"

#include <functional>
#include <string>

namespace orchard {

/// All members may be empty. `started` and `ended` are called on the thread that waits for the tool, but not for a
/// run that was not started because of an interruption.
struct RunWatch {
    std::function<void(const std::string &command)> started;
    std::function<void(const RunEnd &end)> ended;
    /// Called on any thread, before a tool starts and about ten times a second while it runs. Returning true ends
    /// the tool and all its processes, and prevents further tools from starting.
    std::function<bool()> interrupted;
};

/// Sets the watch of the process; an empty one removes it. Must not be called while a tool runs.
ORCHARD_API void setRunWatch(RunWatch watch);
/// Returns the current watch.
[[nodiscard]] const RunWatch &runWatch();

} // namespace orchard
