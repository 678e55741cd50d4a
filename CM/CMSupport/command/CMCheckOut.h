// Checks units out with the command tool and reloads each one from the file that the tool has written.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMCheckOut final : public CMWorkspaceOperation {
  public:
    /// Checks out each unit once; ignores `hybrid`. Returns CommandRun::result(), or 0 if the last file could not
    /// be loaded. Without a tool, appends one diagnostic and returns 0. Afterwards the list contains the units
    /// that still exist and have a handle, in their old order. A unit that was replaced with a new object by its
    /// own reload moves to the end, unless the new object happens to have the address of a unit that no longer
    /// exists. Without a tool the list is unchanged.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
