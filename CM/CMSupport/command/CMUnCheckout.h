// CMUnCheckout: undoes check outs with the command tool, whose template is that of unlocking. The tool brings the
// archive's file back, and each unit is reloaded from it.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMOperation.h"
#include "CM/platform/CString.h"

class CMUnCheckout final : public CMWorkspaceOperation {
  public:
    /// The hybrid flag is ignored. Returns the outcome of the last unit that was worked on. The list comes back
    /// with the units that are alive, the reloaded ones in the place of the old ones.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
    /// Runs the command for each item; the caller brings the model into line. Returns the outcome of the last
    /// item.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);

    /// Lets the unit's file follow its name after a reload that has changed the name, if the file was named after
    /// it and the host allows it. `oldName` is the name of the unit before the reload, `oldFileName` that of its
    /// file, without extension. The unit may be null.
    void renameFileIfNeeded(IUnit *unit, const CString &oldName, CString &oldFileName);
};
