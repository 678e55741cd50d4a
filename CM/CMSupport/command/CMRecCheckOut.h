// Checks out the units that a recursive command has collected. The caller reloads them afterwards.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMRecCheckOut final : public CMWorkspaceOperation {
  public:
    /// Checks out each unit; ignores `hybrid`. Returns CommandRun::result(). Without a tool, appends one
    /// diagnostic and returns 0.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
