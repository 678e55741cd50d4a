// CMToolShellInterface: the one way in which a command reaches the outside on the command route. It never looks at
// a tool's exit status: trouble is found in the text that the tool prints, by patterns held in properties, and
// told to the user from here.
#pragma once

#include "CM/CMSupport/core/CMToolInterface.h"

class ORC_CM_API CMToolShellInterface final : public CMToolInterface {
  public:
    /// Runs `command` in CMProperty::getWorkingDir() (the active project's own directory for units if that is
    /// empty), and waits for its end; the tool property IPN::CMChildThreadTimeOut limits the wait, in
    /// milliseconds. What stands behind the first ">" of the command, untrimmed, names a file that the tool's
    /// output goes to.
    ///
    /// The output lines are appended to `output`. If the tool wrote error lines, these are appended to `error` and
    /// the output lines are dropped; if its time ran out, the output lines are appended to `error`. The command
    /// and what it printed go to the stream of the main CMOutputer.
    ///
    /// Returns 1 if the working directory could be entered and left again, 0 if not (`error` tells why). It is not
    /// the success of the command: a tool that failed or ran out of time gives 1. `directory` has no effect.
    ///
    /// The current directory of the whole process is the working directory during the call: one call at a time.
    int Execute(const CString &command, CString &output, CString &error, CString directory) override;

    /// Tests what a tool printed against the tool properties "OperationErrorPattern" and
    /// "OperationWarningPattern", without regard to case, and shows the user a box for the first that matches. 1
    /// if none did, else 0; an empty text is not tested.
    int checkCommandResults(const CString &text);
};

/// The one shell of the process; never null.
ORC_CM_API CMToolShellInterface *theCMToolShellInterface();
