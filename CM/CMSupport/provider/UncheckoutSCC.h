// Undoes check outs through the provider and reloads each unit from the file that the provider has written.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class UncheckoutSCC final : public CMWorkspaceOperation {
  public:
    /// Undoes the check out of each unit once, in the context of the first one. If the property
    /// "IgnoreUndoCheckoutForNotCheckedoutUnits" of the project is true, a unit that is not checked out ends the
    /// operation, with a line in the CM output window; the host's callback after reloads is then not called. Shows
    /// what the provider answers, writes no diagnostic, ignores `hybrid` and returns 0 in all cases. Afterwards
    /// the list contains the units that are alive.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
    /// Renames the unit's file after a reload that changed the unit's name, if the file had the old name and the
    /// host allows it. `unit` may be null.
    void renameFileIfNeeded(IUnit *unit, const CString &oldFileName, CString &oldName);
};
