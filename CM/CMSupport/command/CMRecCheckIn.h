// Checks in the units that a recursive command has collected, after saving the model.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMRecCheckIn final : public CMWorkspaceOperation {
  public:
    /// Does the same as CMCheckIn, with other log lines.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
