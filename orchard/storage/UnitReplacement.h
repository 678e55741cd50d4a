// Reading a unit anew and putting what was read in its place.
#pragma once

#include "orchard/model/Model.h"
#include "orchard/storage/Problem.h"
#include "orchard/storage/UnitDocument.h"

#include <string>

namespace orchard {

struct Replacement {
    UnitElement *unit = nullptr; ///< what stands in the model now; null if the file could not be read
    Problems problems;           ///< why
    Problems warnings;           ///< what the user should know of a reading that went well
};

/// Reads the unit's file anew. All of it, and of the files below that have to be read, is checked before anything
/// in the model changes; on a fault the model stays as it was.
///
/// If the file names the same elements and units as before, the object stays and takes over the new facts, and
/// units below are left alone. Otherwise the unit and all loaded units below it are read anew and get new objects
/// (a project and a stub keep theirs), except units below that hold changes not yet saved and those whose files
/// are missing: these move over as they are, the latter with a warning. A unit that is new below and whose file is
/// broken becomes a stub, with a warning. Handles go on to the new objects. With
/// `alwaysNew` the second way is taken in any case.
[[nodiscard]] Replacement readAnew(UnitElement &unit, bool alwaysNew = false);

/// Reads a file as a unit of the model: in the place of the unit that has this file; else of the one with its
/// identifier, if that one's file is gone or `takeOver` is set; else as a new unit in the owner that the file
/// names, in the subsystem whose directory it stands in, or in the project.
[[nodiscard]] Replacement readInto(Model &model, const std::string &path, bool takeOver = false);

/// Makes a loaded unit a stub; nothing below it may hold changes that were not saved.
[[nodiscard]] Replacement unload(UnitElement &unit);

} // namespace orchard
