// Lists the archive with the command tool and turns its output into archive items.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMListArchive final : public CMArchiveOperation {
  public:
    /// Appends items made by `new` to the list; the caller deletes them, as the list owns nothing. Existing
    /// entries stay. Returns 0 without a tool or a project, or if the command could not be made or run.
    /// Otherwise returns the result of the last pattern that was tried, or 1 if none was; this says
    /// nothing about the listing.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) override;
};
