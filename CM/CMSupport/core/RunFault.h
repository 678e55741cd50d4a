// Decides whether a run of the tool failed, and names the reason.
#pragma once

#include "CM/CMSupport/core/CMOutcome.h"

/// Returns why the run counts as failed, in words for the user; empty for a good run. The end of the child process
/// and the patterns decide, while the operations depend only on the result of Execute.
[[nodiscard]] CString faultOf(const CMToolRun &run);
