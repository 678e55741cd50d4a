// Lists the commands of the program.
#pragma once

#include "apps/orchard-cm/options/Command.h"

#include <span>

namespace orchard_cm {

/// Returns all commands, in the order of the help text.
std::span<const CommandEntry> allCommands();

} // namespace orchard_cm
