// Undoes the check outs of the units that a recursive command has collected. The caller reloads them afterwards.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMRecUnCheckout final : public CMWorkspaceOperation {
  public:
    /// Undoes the check out of each unit; ignores `hybrid`. Returns 1 for an empty list, even without a tool;
    /// otherwise CommandRun::result(). With units but without a tool, appends one diagnostic and returns 0.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
