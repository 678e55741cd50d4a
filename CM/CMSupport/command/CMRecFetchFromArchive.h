// CMRecFetchFromArchive: fetches the files of the archive that a recursive command has gathered.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMRecFetchFromArchive final : public CMArchiveOperation {
  public:
    /// Returns the outcome of the last item that was worked on.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) override;
};
