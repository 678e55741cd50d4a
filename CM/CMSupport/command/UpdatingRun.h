// Implements check in, lock and unlock: they change the archive's record of a unit and don't reload the unit, but
// update its header and its mode from the file.
#pragma once

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/core/CMOperation.h"

namespace command {

enum class SaveFirst { no, yes };

/// Works on the units from first to last and leaves the list unchanged. With SaveFirst::yes first calls the host's
/// save callback, whatever the properties say, unless the list is empty. Returns CommandRun::result(). Without a
/// tool, appends one diagnostic and returns 0.
int updateUnits(CMOperation &operation, CommandTexts texts, SaveFirst save, const CMUnitList &units,
                CMArgumentList &args, CMDiagnosticList &diags);

} // namespace command
