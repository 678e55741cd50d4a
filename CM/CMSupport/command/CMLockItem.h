// CMLockItem: locks units in the archive with the command tool. The model is not saved.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMLockItem final : public CMWorkspaceOperation {
  public:
    /// The hybrid flag is ignored. Returns the outcome of the last unit that was worked on.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
