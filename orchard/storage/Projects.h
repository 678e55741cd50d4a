// Opening, saving and closing projects: what a program does with a model on disk.
#pragma once

#include "orchard/OrchardApi.h"
#include "orchard/storage/Problem.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

class IProject;
class IUnit;

namespace orchard {

/// What a long opening tells and asks. All members may be left empty.
struct OpenOptions {
    /// Called now and then while unit files are read: how many have been, and how many are known of so far.
    std::function<void(std::size_t done, std::size_t known)> progress;
    /// Asked now and then; true ends the opening, and no project is open then.
    std::function<bool()> cancelled;
    /// Told of what does not stop the opening: a unit file that is missing or broken, so that the unit is a stub.
    std::function<void(const Problem &)> warning;
    /// Whether the project becomes the active one.
    bool activate = true;
};

struct OpenResult {
    IProject *project = nullptr; ///< null if the project could not be read
    Problems problems;           ///< why: every broken file is named
    bool cancelled = false;
    explicit operator bool() const { return project != nullptr; }
};

/// Opens a project and makes it the active one. `path` names the project file (NAME.orp), or a directory that
/// holds exactly one. A unit whose file is missing, can't be read or doesn't hold that unit is a stub, and its
/// file is never written over; the file can be fetched or checked out again. No project is opened if the project
/// file or the project unit can't be read, or if two elements bear one identifier or two units one file. A project
/// that is open already is given back as it is.
[[nodiscard]] ORCHARD_API OpenResult openProject(const std::string &path, const OpenOptions &options = {});

/// The full path of the project file that openProject() would open for `path`; empty if there is none, or none
/// that is meant.
[[nodiscard]] ORCHARD_API std::string projectFileAt(const std::string &path);

/// Closes a project; changes that were not saved are lost, and handles to its objects answer null. If it was the
/// active one, the project opened before it becomes active.
ORCHARD_API void closeProject(IProject *project);
/// Closes all of them, the last opened first.
ORCHARD_API void closeAllProjects();
ORCHARD_API void activateProject(IProject *project);
/// The open projects in the order of their opening.
[[nodiscard]] ORCHARD_API std::vector<IProject *> openProjects();

/// Saves the modified units (all loaded ones with `everything`) and the project file. Each file is written whole
/// or stays as it was; what could not be saved stays modified and is told. Empty on success.
[[nodiscard]] ORCHARD_API Problems saveProject(IProject *project, bool everything = false);

/// The same for the active project, as a plain function: what CMFacade::saveCallbackFunc() takes. What could not
/// be saved is shown to the user. Without a project nothing happens.
ORCHARD_API void saveActiveProject();

/// The project files (*.orp) of a directory, sorted by name.
[[nodiscard]] ORCHARD_API std::vector<std::string> projectFilesIn(const std::string &directory);

/// The project file of an open project, with its full path.
[[nodiscard]] ORCHARD_API std::string projectFileOf(const IProject &project);

struct UnitSearch {
    IUnit *unit = nullptr;
    /// All units that the words fit, in model order, where they fit more than one.
    std::vector<IUnit *> candidates;
    std::string error; ///< why there is no unit, in words for the user
    explicit operator bool() const { return unit != nullptr; }
};

/// Finds a unit by its name ("Valve"), by its path in the model ("Drives/Left/Valve", from the project's top; a
/// leading part may be left out while the rest is unique), or by its file (with or without directory, either
/// separator; a path is taken from the current directory or from the units directory). Upper and lower case are
/// told apart. Words that fit several units name none, and `candidates` lists them.
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
    std::string file; ///< relative to the units directory; the full path for one that stands elsewhere
    UnitState state = UnitState::unloaded;
};

[[nodiscard]] ORCHARD_API UnitState unitState(const IUnit &unit);
[[nodiscard]] ORCHARD_API UnitRow unitRow(const IUnit &unit);
/// Everything that has a file of its own, embedded files included, in model order, owners first.
[[nodiscard]] ORCHARD_API std::vector<UnitRow> workspaceUnits(const IProject &project);

/// Unloads a unit (it and what lies below become stubs, unless something there is modified) or loads a stub.
/// The choice is kept in the project file when the project is saved. What went wrong, or nothing. The object that
/// was given ends by it, as others below do: look the unit up anew before the next use.
[[nodiscard]] ORCHARD_API Problems setUnitLoaded(IUnit &unit, bool loaded);

} // namespace orchard
