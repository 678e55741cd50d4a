// Moves files in the archive when units move to another owner, or together with their package's directory.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMMoveMember final : public CMWorkspaceOperation {
  public:
    /// Moves the file of each unit. `units` is a flat list of triples: the unit, its old owner, its new owner; a
    /// triple that is incomplete or contains a null is skipped. Returns 1 for an empty list (even without a tool),
    /// and also if commands could not be expanded or failed; only the CM output window and the outcomes show that.
    /// Returns 0 in three cases: without a tool, after appending one diagnostic; if a unit has no template, and
    /// then doesn't move the units after it; and if the name of a unit can't be quoted, but then still moves the
    /// units after it.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;

    /// Moves the files of `units` when the directory of `package` moves from `oldPath` to `newPath`. `units` is a
    /// plain list of the package and the units in it; nulls are skipped. Returns as above, but needs a tool even
    /// for an empty list.
    virtual int movePackageContent(IUnit *package, CMUnitList &units, const CString &oldPath,
                                   const CString &newPath, CMArgumentList &args, CMDiagnosticList &diags,
                                   bool hybrid);
};
