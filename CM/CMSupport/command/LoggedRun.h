// One run of a command between the two lines in the log that every operation writes around it.
#pragma once

#include "CM/host/LogTrace.h"
#include "CM/platform/CString.h"

namespace command {

/// What stands in the log around a run.
struct RunTexts {
    const char *source; ///< source path for the log
    const char *before; ///< the line before the run; the command follows
    const char *after;  ///< the line after the run; the output follows. Null for both: nothing is logged
};

/// Runs the command through the shell. What the tool writes is appended to `output` or, if it is trouble, to
/// `errorText`. Returns what CMToolShellInterface::Execute returned, which is not the tool's success: 0 only if
/// the working directory could not be entered or left.
int runLogged(LogTrace::Log &log, const RunTexts &texts, const CString &command, CString &output,
              CString &errorText);

} // namespace command
