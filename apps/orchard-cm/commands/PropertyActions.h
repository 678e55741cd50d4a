// What "property" can do, one a source file.
#pragma once

#include "apps/orchard-cm/commands/Command.h"

#include <memory>

namespace orchard_cm {

std::unique_ptr<Command> makePropertyGetAction();
std::unique_ptr<Command> makePropertySetAction();
std::unique_ptr<Command> makePropertyListAction();

} // namespace orchard_cm
