// Brings the archived files of units to disk with the command tool.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMFetch final : public CMWorkspaceOperation {
  public:
    /// Fetches the file of each unit and reloads none. With `hybrid`, uses the template in the metaclass of the
    /// provider in use. Returns CommandRun::result(). Without a tool, appends one diagnostic and returns 0.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
