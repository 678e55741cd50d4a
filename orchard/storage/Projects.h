// Opens, saves and closes projects on disk.
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

/// Callbacks and options of a long opening. All members may be left empty.
struct OpenOptions {
    /// Called from time to time while unit files are read, with the number of files read and the number known so
    /// far.
    std::function<void(std::size_t done, std::size_t known)> progress;
    /// Called from time to time; true aborts the opening, and no project is opened.
    std::function<bool()> cancelled;
    /// Called for each problem that does not prevent opening: a unit file that is missing or broken, so that the
    /// unit is a stub.
    std::function<void(const Problem &)> warning;
    /// Whether the project becomes the active one.
    bool activate = true;
};

struct OpenResult {
    IProject *project = nullptr; ///< null if the project could not be read
    Problems problems;           ///< the reasons; every broken file is named
    bool cancelled = false;
    explicit operator bool() const { return project != nullptr; }
};

/// Opens a project and makes it active. `path` names the project file (NAME.orp), or a directory that contains
/// exactly one. A unit whose file is missing, can't be read or doesn't contain that unit becomes a stub, and its
/// file is never overwritten; the file can be fetched or checked out again. The opening fails if the project file
/// or the project unit can't be read, if two elements have the same identifier, or if two units have the same
/// file. If the project is already open, returns it as it is.
[[nodiscard]] ORCHARD_API OpenResult openProject(const std::string &path, const OpenOptions &options = {});

/// The full path of the project file that openProject() would open for `path`; empty if there is none, or if the
/// choice is ambiguous.
[[nodiscard]] ORCHARD_API std::string projectFileAt(const std::string &path);

/// Closes a project; unsaved changes are lost, and handles to its objects return null. If it was active, the
/// project opened before it becomes active, or else the one opened after it.
ORCHARD_API void closeProject(IProject *project);
/// Closes all projects, the last opened first.
ORCHARD_API void closeAllProjects();
ORCHARD_API void activateProject(IProject *project);
/// The open projects, in the order in which they were opened.
[[nodiscard]] ORCHARD_API std::vector<IProject *> openProjects();

/// Saves the modified units (with `everything`, all loaded units that are not read-only) and the project file.
/// Each file is either written completely or left as it was. A unit that can't be saved stays modified and is
/// reported. Returns nothing on success.
[[nodiscard]] ORCHARD_API Problems saveProject(IProject *project, bool everything = false);

/// Saves the active project; a plain function, as CMFacade::saveCallbackFunc() requires. Shows the user what could
/// not be saved. Does nothing without a project.
ORCHARD_API void saveActiveProject();

/// The project files (*.orp) of a directory, sorted by name.
[[nodiscard]] ORCHARD_API std::vector<std::string> projectFilesIn(const std::string &directory);

/// The project file of an open project, with its full path.
[[nodiscard]] ORCHARD_API std::string projectFileOf(const IProject &project);

/// Unloads a unit, so that it and the units below become stubs (fails if anything there is modified), or loads a
/// stub. Saving the project stores the choice in the project file. Returns the problems, or nothing on success.
/// The call may destroy the passed object and others below it: look the unit up again before the next use.
[[nodiscard]] ORCHARD_API Problems setUnitLoaded(IUnit &unit, bool loaded);

} // namespace orchard
