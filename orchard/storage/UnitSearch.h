// Finds and lists the units of a project.
#pragma once

#include "orchard/OrchardApi.h"

#include <string>
#include <string_view>
#include <vector>

class IProject;
class IUnit;

namespace orchard {

struct UnitSearch {
    IUnit *unit = nullptr;
    /// If the words match several units: all of them, in model order.
    std::vector<IUnit *> candidates;
    std::string error; ///< why no unit was found, in words for the user
    explicit operator bool() const { return unit != nullptr; }
};

/// Finds a unit by its name ("Valve"), by its path in the model ("Drives/Left/Valve", starting below the project;
/// leading parts may be omitted if the rest is unique), or by its file (with or without directory, either
/// separator; a path is relative to the current directory or to the units directory). Matching is case-sensitive.
/// If the words match several units, none is returned, and `candidates` lists the matches.
[[nodiscard]] ORCHARD_API UnitSearch findUnit(const IProject &project, std::string_view words);

enum class UnitState {
    unloaded,  ///< "U", a stub
    readOnly,  ///< "RO"
    readWrite, ///< "RW"
};
/// "U", "RO" or "RW".
[[nodiscard]] ORCHARD_API const char *unitStateText(UnitState state);

struct UnitRow {
    IUnit *unit = nullptr;
    std::string name;
    std::string path; ///< in the model, below the project; the project's own name for the project
    std::string type; ///< display name of the kind
    std::string file; ///< relative to the units directory; the full path for a file outside it
    UnitState state = UnitState::unloaded;
};

[[nodiscard]] ORCHARD_API UnitState unitState(const IUnit &unit);
[[nodiscard]] ORCHARD_API UnitRow unitRow(const IUnit &unit);
/// All units that have a file of their own, including embedded files, in model order, owners first.
[[nodiscard]] ORCHARD_API std::vector<UnitRow> workspaceUnits(const IProject &project);

} // namespace orchard
