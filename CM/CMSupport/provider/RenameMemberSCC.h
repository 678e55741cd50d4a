// Renames a member in a provider's archive, after the host has renamed it in the model.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class RenameMemberSCC final : public CMWorkspaceOperation {
  public:
    /// Does nothing and returns 0.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
    /// Renames the unit's file; of a subsystem that is stored as a directory first the directory, then the file in
    /// it. Returns 1 on success, which is shown, and for equal paths; 0 for a null unit, an empty path, without a
    /// context, and if the provider failed, which goes to the CM output window. Writes no diagnostic and ignores
    /// `hybrid`.
    int operator()(IUnit *unit, const CString &oldPath, const CString &newPath, CMDiagnosticList &diags,
                   bool hybrid);
};
