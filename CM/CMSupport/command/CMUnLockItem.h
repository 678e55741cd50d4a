// CMUnLockItem: gives the locks of units back with the command tool. The model is not saved.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMUnLockItem final : public CMWorkspaceOperation {
  public:
    /// The hybrid flag is ignored. Returns the outcome of the last unit that was worked on.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
