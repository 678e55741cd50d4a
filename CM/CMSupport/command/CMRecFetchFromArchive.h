// Fetches the files of the archive that a recursive command has collected.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMRecFetchFromArchive final : public CMArchiveOperation {
  public:
    /// Does the same as CMFetchFromArchive, with other log lines.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) override;
};
