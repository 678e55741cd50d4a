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

/// Reads the unit's file again. Checks this file, and the files below it that must be read, completely before it
/// changes the model. On a fault the model stays unchanged.
///
/// If the file names the same elements and units as before, the object stays and takes over the new data, and
/// units below are left alone. Otherwise, and always with `alwaysNew`, the unit and all loaded units below it are
/// read again and get new objects, except that a project and a stub keep theirs. Of the units below, those with
/// unsaved changes and those whose files are missing are kept as they are (the latter with a warning). A new unit
/// whose file is broken becomes a stub, with a warning. Handles lead to the new objects.
[[nodiscard]] Replacement reread(UnitElement &unit, bool alwaysNew = false);

/// The same, with the text of the unit's own file, at `path`, given.
[[nodiscard]] Replacement replaceUnit(UnitElement &unit, const FileText &file, const std::string &path,
                                      bool alwaysNew);

/// Makes a loaded unit a stub; fails if it or anything below it has unsaved changes.
[[nodiscard]] Replacement unload(UnitElement &unit);

} // namespace orchard
