// Checks units in through the provider, all in one call.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CheckInSCC final : public CMWorkspaceOperation {
  public:
    /// Checks in the units that are checked out, in the context of the first one. The first argument answers "log"
    /// with the comment. Units that are not under control are added to the archive first if the property
    /// "AddNewUnitsToArchiveDuringCheckin" of the project is true; a unit that is left out gets a line in the CM
    /// output window. Returns 1 if there was nothing to check in, else 0, whatever the provider answered, which is
    /// shown. If there was, the argument list has a further entry at its end, which stays valid. Writes no
    /// diagnostic and ignores `hybrid`.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
};
