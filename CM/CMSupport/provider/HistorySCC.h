// Shows the history of files in the provider's window, all in one call. Both forms show what the provider answers,
// write no diagnostic and return 0. If the provider has options for the command, the user chooses them first, and
// may cancel.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class HistorySCC {
  public:
    /// Shows the history of units, in the context of the first one.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    /// Shows the history of items of the archive, in the context of CMProperty::getPvContext().
    int Alt(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
};
