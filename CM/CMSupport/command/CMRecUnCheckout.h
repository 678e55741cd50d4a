// CMRecUnCheckout: undoes the check outs of the units that a recursive command has gathered; its caller reloads
// them afterwards.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMRecUnCheckout final : public CMWorkspaceOperation {
  public:
    /// The hybrid flag is ignored. 1 for an empty list, also without a tool; else the outcome of the last unit
    /// that was worked on.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
