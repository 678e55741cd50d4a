// Checks units out with the command tool and reloads each one from the file that the tool has written.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMCheckOut final : public CMWorkspaceOperation {
  public:
    /// Checks out each unit once and returns the outcome of the last one that was worked on; the hybrid flag is
    /// ignored. Afterwards the list contains the units that are alive and have a handle, in their old order. A
    /// unit that its own reload replaced by a new object comes last, unless the new object has the address of a
    /// unit that died. Without a tool the list is unchanged.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
