// CMHistory: asks the command tool for the history of units. The answer is read by the user in the CM output
// window.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMHistory final : public CMWorkspaceOperation {
  public:
    /// The hybrid flag is ignored. Returns the outcome of the last unit that was worked on.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
