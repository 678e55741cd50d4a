// Checks out the units that a recursive command has collected. The caller reloads them afterwards.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMRecCheckOut final : public CMWorkspaceOperation {
  public:
    /// Checks out each unit; ignores `hybrid`. Returns CommandRun::result(); 0 without a tool, which makes one
    /// diagnostic.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
