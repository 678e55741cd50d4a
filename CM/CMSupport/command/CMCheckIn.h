// Checks units in with the command tool, after saving the model.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMCheckIn final : public CMWorkspaceOperation {
  public:
    /// Saves the model, unless the list is empty, and checks each unit in; ignores `hybrid`. Returns
    /// CommandRun::result(). Without a tool, appends one diagnostic and returns 0.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
