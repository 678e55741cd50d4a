// Checks out the files of the archive that a recursive command has collected, in one call of the provider. The
// caller loads them into the model afterwards.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/CMDiagnostic.h"

class RecCheckOutFromArchiveSCC {
  public:
    /// Checks out the items whose files are up to date, in the context of CMProperty::getPvContext(). Shows what
    /// the provider answers, unless a file was left out as out of date, which is shown instead. Writes no
    /// diagnostic and returns 0 in all cases.
    int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
};
