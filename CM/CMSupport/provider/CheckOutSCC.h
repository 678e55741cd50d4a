// Checks units out through the provider and reloads each one from the file that the provider has written.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CheckOutSCC final : public CMWorkspaceOperation {
  public:
    /// Checks out each unit once, each in a call of its own; all in one call if the property "UnrollLoops" of the
    /// project is true. Shows what the provider answers, writes no diagnostic, ignores `hybrid` and returns 0 in
    /// all cases. Afterwards the list contains the units that are alive; without a context,
    /// which a message has reported, the operation ends at once and does not call the host's callback after
    /// reloads.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
