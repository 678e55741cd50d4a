// CMFetchFromArchive: brings files of the archive to disk with the command tool.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMFetchFromArchive final : public CMArchiveOperation {
  public:
    /// Returns the outcome of the last item that was worked on.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) override;
};
