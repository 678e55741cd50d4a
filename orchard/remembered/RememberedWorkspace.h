// Lists a large workspace without reading it: keeps the last list in the user's cache directory and uses it until
// a file of the model changes.
#pragma once

#include "orchard/storage/Projects.h"

#include "orchard/storage/UnitSearch.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace orchard {

class RememberedWorkspace {
  public:
    /// Keeps the list of an open project for the next time. `openedAt` is when its opening began. Does nothing if
    /// the list can't be kept or could not be trusted: a unit is missing, broken or modified, a file was changed
    /// within the two seconds before the opening, the file system keeps no reliable change times (see FileState),
    /// or the cache directory can't be written. Keeps the 16 records that were written last.
    static void keep(const IProject &project, std::chrono::system_clock::time_point openedAt);

    /// Returns the list kept for a project, or null if any file of the model has changed. `path` is as for
    /// openProject(); the progress and cancelling of `options` are used. As long as this object exists, the
    /// project is open and active, but only the units needed to look up properties are loaded. The project must
    /// not be open already.
    [[nodiscard]] static std::unique_ptr<RememberedWorkspace> open(const std::string &path,
                                                                   const OpenOptions &options = {});
    /// Closes the project.
    ~RememberedWorkspace();
    RememberedWorkspace(const RememberedWorkspace &) = delete;
    RememberedWorkspace &operator=(const RememberedWorkspace &) = delete;

    /// Visits the same rows as workspaceUnits() would return, in order. A row and its unit are valid until `visit`
    /// returns; of the unit, only the header may be queried.
    void visitUnits(const std::function<void(const UnitRow &)> &visit) const;

  private:
    struct State;
    explicit RememberedWorkspace(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

} // namespace orchard
