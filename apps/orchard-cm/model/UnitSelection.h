// Finds the unit that a user names.
#pragma once

#include "CM/host/IProject.h"
#include "CM/host/IUnit.h"

#include <string>
#include <vector>

namespace orchard_cm {

/// Returns the unit that `words` name: by name, by path in the model, or by file. Throws a Failure if they name
/// none or more than one, with suggestions.
IUnit &unitNamed(const IProject &project, const std::string &words);
/// Returns all named units, each once, in the order given.
std::vector<IUnit *> unitsNamed(const IProject &project, const std::vector<std::string> &words);
/// Returns the given units and all units below them, each once, owners first.
std::vector<IUnit *> withUnitsBelow(const IProject &project, const std::vector<IUnit *> &units);

} // namespace orchard_cm
