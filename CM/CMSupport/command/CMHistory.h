// Shows the history of units in the CM output window, as the command tool prints it.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMHistory final : public CMWorkspaceOperation {
  public:
    /// Runs the tool's command for each unit; ignores `hybrid`. Returns CommandRun::result(). Without a tool,
    /// appends one diagnostic and returns 0.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
