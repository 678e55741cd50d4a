// Removes members from a provider's archive.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class DeleteMemberSCC final : public CMWorkspaceOperation {
  public:
    /// Removes each unit, in its own context; the provider Tessera is given the directory of a subsystem that is
    /// stored as one. If the provider has options for the command, the user chooses them for each unit. Returns 1,
    /// also after a failure of the provider, which is shown; 0 without a context, which ends the operation. Writes
    /// no diagnostic and ignores `hybrid`.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
    /// Removes a directory, in the context of the project. Returns 1, also for an empty text; 0 without a context.
    int DeleteDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags);
};
