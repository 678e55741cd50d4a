// Locks units in the archive with the command tool.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMLockItem final : public CMWorkspaceOperation {
  public:
    /// Locks each unit without saving the model; ignores `hybrid`. Returns CommandRun::result(). Without a tool,
    /// appends one diagnostic and returns 0.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
