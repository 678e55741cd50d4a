// Declares the actions of "property", each of which has its own source file.
#pragma once

#include "apps/orchard-cm/options/Command.h"

#include <memory>

namespace orchard_cm {

std::unique_ptr<Command> makePropertyGetAction();
std::unique_ptr<Command> makePropertySetAction();
std::unique_ptr<Command> makePropertyListAction();

} // namespace orchard_cm
