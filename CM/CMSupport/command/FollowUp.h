// Updates the header and the mode of a unit after its command.
#pragma once

#include "CM/host/IUnit.h"

namespace command {

/// Reads the unit's CM header from its file. If the file can't be read, the header is unchanged.
void updateHeader(IUnit &unit);
/// Sets the unit's mode from the permissions of its file.
void updateMode(IUnit &unit);

} // namespace command
