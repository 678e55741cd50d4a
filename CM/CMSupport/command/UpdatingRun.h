// What check in, lock and unlock share: they change what the archive says about a unit, and the unit itself stays
// loaded as it is; its header and its mode are brought into line with the file.
#pragma once

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/core/CMOperation.h"

namespace command {

enum class SaveFirst { no, yes };

/// Works on the units front to back, without touching the list. With SaveFirst::yes the host's save callback is
/// called before, once, unless the list is empty; no property is asked. Returns the outcome of the last unit.
int updateUnits(CMOperation &operation, CommandTexts texts, SaveFirst save, const CMUnitList &units,
                CMArgumentList &args, CMDiagnosticList &diags);

} // namespace command
