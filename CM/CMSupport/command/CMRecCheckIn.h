// CMRecCheckIn: checks in the units that a recursive command has gathered, after saving the model.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMRecCheckIn final : public CMWorkspaceOperation {
  public:
    /// The hybrid flag is ignored. Returns the outcome of the last unit that was worked on.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
