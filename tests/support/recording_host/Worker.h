// Simulates the worker: starts no child; a function of the test determines what a command does.
#pragma once

#include "CM/host/RunThread.h"
#include "CM/platform/CString.h"

#include <functional>
#include <vector>

namespace recording {

/// The result of a command. Lines keep their line ends.
struct ToolRun {
    std::vector<CString> outputLines;
    std::vector<CString> errorLines;
    int status = 0;  ///< the result of getStatus: 0 or WAIT_TIMEOUT
    RunEnd end = {}; ///< unknown, as from a host that does not report it
};

struct Worker {
    /// Called when the command starts; changes files or the model as the tool would. By default every command
    /// ends at once without output.
    std::function<ToolRun(const CString &command)> run;
    std::vector<CString> commands; ///< the commands that ran, in order
    int alive = 0;                 ///< workers that are not deleted yet
};

} // namespace recording
