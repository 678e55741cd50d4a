// Selects the archive of the next unit.
#pragma once

#include "CM/host/IUnit.h"

namespace command {

/// Makes the unit's archive the main archive, unless there is one archive for the whole project.
void selectArchive(const IUnit &unit);

} // namespace command
