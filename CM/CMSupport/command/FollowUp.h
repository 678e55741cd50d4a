// Brings header and mode of a unit into line after its command.
#pragma once

#include "CM/host/IUnit.h"

namespace command {

/// Takes the unit's CM header from its file. A file that can't be read leaves the header as it was.
void updateHeader(IUnit &unit);
/// Brings the unit's mode into line with what its file permits.
void updateMode(IUnit &unit);

} // namespace command
