// Lists the archive with the command tool and turns its output into archive items.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMListArchive final : public CMArchiveOperation {
  public:
    /// Creates items with `new` and appends them to the list; the caller must delete them, because the list
    /// doesn't own them. Existing entries stay. Returns 0 without a tool or a project, or if the command could not
    /// be expanded or run. Otherwise returns the result of the last pattern that was tried, or 1 if none was; this
    /// doesn't tell whether the listing succeeded.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) override;
};
