// CMCheckOutFromArchive: checks files of the archive out, and brings each into the model, where it may be new.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMCheckOutFromArchive final : public CMArchiveOperation {
  public:
    /// Returns the outcome of the last item that was worked on.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) override;
};
