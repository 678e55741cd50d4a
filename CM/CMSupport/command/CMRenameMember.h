// CMRenameMember: keeps the archive in step when the file of a unit gets another name, or comes into another
// directory.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMRenameMember final : public CMWorkspaceOperation {
  public:
    /// Does nothing and returns 0: units are renamed one by one.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;

    /// Both paths are those of the unit's file. Across directories and with a template for directories the file is
    /// renamed in its old directory first, and the directory follows. 1, also if a command failed: the CM output
    /// window tells that. 0 without a unit, a tool or a template.
    virtual int operator()(IUnit *unit, const CString &oldPath, const CString &newPath, CMDiagnosticList &diags,
                           bool hybrid);
};
