// Undoes check outs with the command tool, using the template for unlocking. The tool restores the archived file,
// and each unit is reloaded from it.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMOperation.h"
#include "CM/platform/CString.h"

class CMUnCheckout final : public CMWorkspaceOperation {
  public:
    /// Undoes the check out of each unit once; ignores `hybrid`. Returns CommandRun::result(), or 0 if the last
    /// file could not be loaded. Without a tool, appends one diagnostic, returns 0 and leaves the list unchanged.
    /// Afterwards the list contains the same units in the same order as after CMCheckOut.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
    /// Runs the command for each item; the caller updates the model. Returns CommandRun::result(). Without a tool,
    /// appends one diagnostic and returns 0.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);

    /// After a reload that changed the unit's name, renames its file accordingly if the file had the old name and
    /// the host allows it. `oldName` is the name of the unit before the reload, `oldFileName` that of its file,
    /// without extension. The unit may be null.
    void renameFileIfNeeded(IUnit *unit, const CString &oldName, CString &oldFileName);
};
