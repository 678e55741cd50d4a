// From what a user calls a unit to the unit.
#pragma once

#include "CM/host/IProject.h"
#include "CM/host/IUnit.h"

#include <string>
#include <vector>

namespace orchard_cm {

/// The unit that `words` name: by name, by path in the model, or by file. Throws a Failure where they name none or
/// more than one, with the names that may have been meant.
IUnit &unitNamed(const IProject &project, const std::string &words);
/// All of them, each once, in the order given.
std::vector<IUnit *> unitsNamed(const IProject &project, const std::vector<std::string> &words);
/// The units given and all units below them, each once, owners first.
std::vector<IUnit *> withUnitsBelow(const IProject &project, const std::vector<IUnit *> &units);

} // namespace orchard_cm
