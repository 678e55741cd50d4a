// CMRecCheckOutFromArchive: checks out the files of the archive that a recursive command has gathered; its caller
// brings them into the model afterwards.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMRecCheckOutFromArchive final : public CMArchiveOperation {
  public:
    /// Returns the outcome of the last item that was worked on.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) override;
};
