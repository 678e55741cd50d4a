// Brings the archived files of units to disk with the command tool.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMFetch final : public CMWorkspaceOperation {
  public:
    /// Fetches the file of each unit and reloads none. With `hybrid` the template is that of the provider in use.
    /// Returns CommandRun::result(); 0 without a tool, which makes one diagnostic.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
