// CMMoveMember: keeps the archive in step when units move to another owner, or with their package's directory.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMMoveMember final : public CMWorkspaceOperation {
  public:
    /// `units` is a flat list of triples: the unit, its old owner, its new owner. A triple with a null in it, at
    /// the end for want of entries, is passed over. 1, also if commands failed: the CM output window tells that. 0
    /// without a tool, or as soon as a unit has no template: the units behind it are left as they are.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;

    /// Moves `units`, a plain list of what lies in `package` and of the package itself, when the package's
    /// directory moves from `oldPath` to `newPath`. Returns as above.
    virtual int movePackageContent(IUnit *package, CMUnitList &units, const CString &oldPath,
                                   const CString &newPath, CMArgumentList &args, CMDiagnosticList &diags,
                                   bool hybrid);
};
