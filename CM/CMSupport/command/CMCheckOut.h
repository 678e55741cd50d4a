// CMCheckOut: checks units out with the command tool, and reloads each from the file that the tool has written.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMCheckOut final : public CMWorkspaceOperation {
  public:
    /// The hybrid flag is ignored. Returns the outcome of the last unit that was worked on.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
