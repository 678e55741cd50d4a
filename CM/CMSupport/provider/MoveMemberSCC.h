// Moves members in a provider's archive, after the host has moved them in the model.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class MoveMemberSCC final : public CMWorkspaceOperation {
  public:
    /// Takes triples: the unit, its old owner, its new owner. Moves each unit with a file of its own, in its own
    /// context, if the directories of the owners differ. Returns 1; 0 for an empty list, and at the first unit
    /// without a context or with a failure of the provider, which goes to the CM output window. Writes no
    /// diagnostic and ignores `hybrid`.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
    /// Moves the units of a package when the package's directory moves. Returns as above, but 1 for an empty list;
    /// also 0, with a diagnostic, if isCMTool finds no tool.
    int movePackageContent(IUnit *package, CMUnitList &units, const CString &oldPath, const CString &newPath,
                           CMArgumentList &args, CMDiagnosticList &diags, bool hybrid);
};
