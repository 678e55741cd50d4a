// Lists the units of the workspace that can be under configuration management. Runs no command.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMListWorkspace final : public CMWorkspaceOperation {
  public:
    /// Replaces the contents of the list with all units that have their own file, except references, embedded
    /// files of references, the workspace, and subsystems that are hidden from configuration management. The other
    /// arguments are not used. Returns 1.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
