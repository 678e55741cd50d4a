// Undoes check outs with the command tool, using the template for unlocking. The tool restores the archived file,
// and each unit is reloaded from it.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMOperation.h"
#include "CM/platform/CString.h"

class CMUnCheckout final : public CMWorkspaceOperation {
  public:
    /// Undoes the check out of each unit once; ignores `hybrid`. Returns CommandRun::result(), or 0 if the last
    /// file could not be loaded; 0 without a tool, which makes one diagnostic and leaves the list unchanged.
    /// Afterwards the list contains the same units in the same order as after CMCheckOut.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
    /// Runs the command for each item; the caller updates the model. Returns CommandRun::result(); 0 without a
    /// tool, which makes one diagnostic.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);

    /// Lets the unit's file follow its name after a reload that has changed the name, if the file was named after
    /// it and the host allows it. `oldName` is the name of the unit before the reload, `oldFileName` that of its
    /// file, without extension. The unit may be null.
    void renameFileIfNeeded(IUnit *unit, const CString &oldName, CString &oldFileName);
};
