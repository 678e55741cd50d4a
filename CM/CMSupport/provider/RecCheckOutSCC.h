// Checks out the units that a recursive command has collected, in one call of the provider. The caller reloads
// them afterwards.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class RecCheckOutSCC final : public CMWorkspaceOperation {
  public:
    /// Checks out the units whose files are up to date, in the context of the first one, and updates the states of
    /// all. Shows what the provider answers, writes no diagnostic, ignores `hybrid` and returns 0 in all cases.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
