// Runs a command and writes a log line before and after it.
#pragma once

#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/host/LogTrace.h"
#include "CM/platform/CString.h"

namespace command {

/// Describes the log lines around a run.
struct RunTexts {
    const char *source; ///< source path for the log
    const char *before; ///< the line before the run; the command follows
    const char *after;  ///< the line after the run; the output follows. Null for both: nothing is logged
};

/// Runs the command through the shell. Appends what the tool writes to `output` or, if it reports an error, to
/// `errorText`. Returns the result of CMToolShellInterface::Execute, which doesn't tell whether the tool
/// succeeded: it is 0 only if the working directory could not be entered or left. Adds the run to the report; the
/// caller passes the output to OutcomeReport::printed when it no longer needs it.
int runLogged(LogTrace::Log &log, const RunTexts &texts, const CString &command, CString &output,
              CString &errorText, OutcomeReport &report);

} // namespace command
