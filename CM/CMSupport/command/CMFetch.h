// CMFetch: brings the archived files of units to disk with the command tool.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMFetch final : public CMWorkspaceOperation {
  public:
    /// With the hybrid flag the template is that of the provider in use. The units stay as they are loaded.
    /// Returns the outcome of the last unit that was worked on.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
