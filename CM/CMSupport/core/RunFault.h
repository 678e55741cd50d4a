// Decides whether a run of the tool failed, and names the reason.
#pragma once

#include "CM/CMSupport/core/CMOutcome.h"

/// Returns why the run counts as failed, in words for the user; empty for a good run. This depends on how the
/// child process ended, on the result of a provider's call, and on the error pattern; the operations themselves
/// look only at the result of Execute.
[[nodiscard]] CString faultOf(const CMToolRun &run);
