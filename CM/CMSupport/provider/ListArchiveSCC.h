// Lists the files of the provider's archive.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class ListArchiveSCC final : public CMArchiveOperation {
  public:
    /// Lists the directories of the project and of its units, in the context of the project, which becomes that of
    /// CMProperty::getPvContext() if anything was found. Appends an item for each file that NeedToAddFile accepts;
    /// the caller owns the items. Returns 1; 0 without a project or a context, or if the states of the files could
    /// not be read, which is shown. `units` is not used.
    int operator()(CMArchiveItemList &items, CMUnitList &units);
    /// Does the same for all that the provider lists in the context of CMProperty::getPvContext(). Returns 1 if it
    /// lists nothing, else 0.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) override;
};
