// CMListArchive: asks the command tool what the archive holds, and turns what it prints into archive items.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMListArchive final : public CMArchiveOperation {
  public:
    /// Appends the items, made by `new`, to the list, which owns them; what it holds already stays. The return
    /// says nothing about the listing: it is that of the last pattern that was tried.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) override;
};
