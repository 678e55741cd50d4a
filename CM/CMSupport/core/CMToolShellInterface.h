// Runs every command of the command route. The tool's exit status does not affect the result: patterns from
// properties find problems in the text that the tool prints, and this class shows them to the user.
#pragma once

#include "CM/CMSupport/core/CMOutcome.h"
#include "CM/CMSupport/core/CMToolInterface.h"

class ORC_CM_API CMToolShellInterface final : public CMToolInterface {
  public:
    /// Runs `command` in CMProperty::getWorkingDir() (the active project's own directory for units if that is
    /// empty), and waits for its end; the tool property IPN::CMChildThreadTimeOut limits the wait, in
    /// milliseconds. The text after the first ">" of the command, untrimmed, is the name of a file that receives
    /// the tool's output.
    ///
    /// Appends the output lines to `output`. If the tool wrote error lines, appends these to `error` and drops the
    /// output lines; if its time ran out, appends the output lines to `error`. Writes the command and what it
    /// printed to the stream of the main CMOutputer.
    ///
    /// Returns 1 if the working directory could be entered and left again, 0 if not (`error` says why). This
    /// doesn't tell whether the command succeeded: the result is 1 even if the tool failed or ran out of time.
    /// `directory` has no effect.
    ///
    /// During the call the working directory is the current directory of the process, so only one call may run at
    /// a time.
    int Execute(const CString &command, CString &output, CString &error, CString directory) override;
    /// Does the same and describes the run in `run`: the command, the end of its child process, what it wrote to
    /// standard error, the pattern that matches the text of this run, and the output that `output` did not
    /// receive.
    int Execute(const CString &command, CString &output, CString &error, CMToolRun &run);

    /// Tests what a tool printed against the tool properties "OperationErrorPattern" and
    /// "OperationWarningPattern", ignoring case, and shows the user a message box for the first that matches.
    /// Returns 1 if none matched, else 0. An empty text is not tested.
    int checkCommandResults(const CString &text);
};

/// Returns the only shell of the process; never null.
ORC_CM_API CMToolShellInterface *theCMToolShellInterface();
