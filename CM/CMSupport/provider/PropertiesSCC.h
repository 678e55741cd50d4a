// Shows what the provider's archive knows of units, in the provider's window, one unit after the other.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class PropertiesSCC {
  public:
    /// Shows the properties of each unit, in its own context. If the provider has options for the command, the
    /// user chooses them for the first unit; cancelling ends the operation. Only the result of the last unit is
    /// shown. Writes no diagnostic and returns 0.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
};
