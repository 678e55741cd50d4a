// Checks out the files of the archive that a recursive command has collected. The caller loads them into the model
// afterwards.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMRecCheckOutFromArchive final : public CMArchiveOperation {
  public:
    /// Checks out each item. Returns CommandRun::result(). Without a tool, appends one diagnostic and returns 0.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) override;
};
