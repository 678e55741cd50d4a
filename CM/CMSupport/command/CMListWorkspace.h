// CMListWorkspace: the units of the workspace that can be under configuration management. Runs no command.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMListWorkspace final : public CMWorkspaceOperation {
  public:
    /// Empties the list and fills it: all units with files of their own but references, what they hold, the
    /// workspace, and subsystems that are hidden from configuration management. The other arguments are not used.
    /// Always 1.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
