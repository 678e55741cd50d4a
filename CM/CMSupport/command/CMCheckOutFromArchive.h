// Checks files of the archive out and loads each into the model, which may not contain it yet.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMCheckOutFromArchive final : public CMArchiveOperation {
  public:
    /// Saves the model if the tool's properties ask for it, then works on each item. An item that is not a unit
    /// file (getType() is empty) is not loaded. Returns CommandRun::result(), or 0 if the last file could not be
    /// loaded. Without a tool, appends one diagnostic and returns 0.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) override;
};
