// Brings files of the archive to disk with the command tool.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMFetchFromArchive final : public CMArchiveOperation {
  public:
    /// Fetches each item. Returns CommandRun::result(). Without a tool, appends one diagnostic and returns 0.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) override;
};
