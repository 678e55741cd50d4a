// Reads many unit files in parallel.
#pragma once

#include "orchard/storage/UnitReader.h"

#include <span>

namespace orchard {

/// A unit that a file lists, and the result of reading its own file.
struct ListedUnit {
    UnitElement *unit = nullptr;
    bool isWanted = true; ///< if false, its file is not read
    UnitReading reading;
};

/// Reads the files of all units in the span, on several threads if there are many. Until this returns, nothing
/// else may use the units, or change the names and places of their owners. Rethrows an exception of a reading.
void readFiles(Model &model, std::span<ListedUnit> units);

} // namespace orchard
