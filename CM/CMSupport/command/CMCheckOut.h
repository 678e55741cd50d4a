// Checks units out with the command tool and reloads each one from the file that the tool has written.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMCheckOut final : public CMWorkspaceOperation {
  public:
    /// Checks out each unit once; ignores `hybrid`. Returns CommandRun::result(), or 0 if the last file
    /// could not be loaded; 0 without a tool, which makes one diagnostic. Afterwards the list contains the units
    /// that are alive and have a handle, in their old order. A unit that its own reload replaced by a new object
    /// comes last, unless the new object has the address of a unit that died. Without a tool the list is
    /// unchanged.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
