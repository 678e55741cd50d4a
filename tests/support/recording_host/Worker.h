// The worker of the recording host: no child is started, a function of the test says what the command did.
#pragma once

#include "CM/platform/CString.h"

#include <functional>
#include <vector>

namespace recording {

/// What a command did. Lines keep their line ends.
struct ToolRun {
    std::vector<CString> outputLines;
    std::vector<CString> errorLines;
    int status = 0; ///< what getStatus answers: 0, or WAIT_TIMEOUT
};

struct Worker {
    /// Called as the command starts; changes files or the model as the tool would. Without a function every
    /// command ends at once and in silence.
    std::function<ToolRun(const CString &command)> run;
    std::vector<CString> commands; ///< those that were run, in order
    int alive = 0;                 ///< workers that were made and not deleted
};

} // namespace recording
