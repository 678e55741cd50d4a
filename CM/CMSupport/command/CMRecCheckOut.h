// CMRecCheckOut: checks out the units that a recursive command has gathered; its caller reloads them afterwards.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMRecCheckOut final : public CMWorkspaceOperation {
  public:
    /// The hybrid flag is ignored. Returns the outcome of the last unit that was worked on.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
