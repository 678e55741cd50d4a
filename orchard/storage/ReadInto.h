// Reads a file that may have moved, or may be new to the model.
#pragma once

#include "orchard/storage/UnitReplacement.h"

#include <string>

namespace orchard {

/// Reads a file as a unit of the model. It replaces the unit that has this file, or else the unit with its
/// identifier if that unit's file is gone or `takeOver` is set. Otherwise it becomes a new unit in the owner that
/// the file names, in the subsystem that has the file's directory, or in the project.
[[nodiscard]] Replacement readInto(Model &model, const std::string &path, bool takeOver = false);

} // namespace orchard
