// Checks files of the archive out through the provider and loads each into the model, which may not contain it
// yet.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CheckOutFromArchiveSCC final : public CMArchiveOperation {
  public:
    /// Checks out each item in a call of its own, in the context of CMProperty::getPvContext(). A failure of the
    /// provider is not shown. Writes no diagnostic and returns 0 in all cases.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) override;
};
