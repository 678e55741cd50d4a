// Reads a unit again and replaces it with the result.
#pragma once

#include "orchard/model/Model.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/Problem.h"

#include <string>

namespace orchard {

struct Replacement {
    UnitElement *unit = nullptr; ///< what is in the model now; null if the file could not be read
    Problems problems;           ///< the reasons
    Problems warnings;           ///< what the user should know about a successful reading
};

/// Reads the unit's file again. It, and the files below that must be read, are checked completely before anything
/// in the model changes; on a fault the model stays as it was.
///
/// If the file names the same elements and units as before, the object stays and takes over the new data, and
/// units below are left alone. Otherwise, and always with `alwaysNew`, the unit and all loaded units below it are
/// read again and get new objects, except that a project and a stub keep theirs. Units below that have unsaved
/// changes or whose files are missing are moved over as they are, the latter with a warning. A new unit below
/// whose file is broken becomes a stub, with a warning. Handles lead to the new objects.
[[nodiscard]] Replacement readAnew(UnitElement &unit, bool alwaysNew = false);

/// The same, with the text of the unit's own file, at `path`, given.
[[nodiscard]] Replacement replaceUnit(UnitElement &unit, const FileText &file, const std::string &path,
                                      bool alwaysNew);

/// Makes a loaded unit a stub; fails if it or anything below it has unsaved changes.
[[nodiscard]] Replacement unload(UnitElement &unit);

} // namespace orchard
