// Renames files in the archive when the file of a unit gets another name or moves to another directory.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMRenameMember final : public CMWorkspaceOperation {
  public:
    /// Does nothing and returns 0: units are renamed one by one.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;

    /// Renames the unit's file from the full name `oldPath` to `newPath`. If the directories differ and the tool
    /// has a template for directories, renames the file in its old directory first, then the directory. Returns 1
    /// for equal paths (even without a tool), and also if the commands could not be expanded or failed; only the
    /// CM output window and the outcome show that. Returns 0 without a unit, a tool (one diagnostic) or a
    /// template, and for a name that no command can quote.
    virtual int operator()(IUnit *unit, const CString &oldPath, const CString &newPath, CMDiagnosticList &diags,
                           bool hybrid);
};
