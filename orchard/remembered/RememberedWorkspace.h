// Lists a large workspace without reading it: what was listed is kept in the user's cache directory, and holds as
// long as no file of the model has changed.
#pragma once

#include "orchard/OrchardApi.h"
#include "orchard/storage/Projects.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace orchard {

class ORCHARD_API RememberedWorkspace {
  public:
    /// Keeps what the list of an open project tells, for the next time. `openedAt` is when its opening began.
    /// Nothing happens if that can't be kept, or could not be trusted: a unit is missing, broken or modified, a
    /// file was changed within the last seconds before the opening, the file system is none that tells of changes
    /// (see FileState), or the cache directory can't be written. Of many projects the ones listed last are kept.
    static void keep(const IProject &project, std::chrono::system_clock::time_point openedAt);

    /// What was kept of a project, if every file of the model is still what it was; else null. `path` as for
    /// openProject(), `options` for its progress and cancelling. The project is open meanwhile and the active one,
    /// but only so much of it is loaded that properties are found as in the whole; no project of this path may be
    /// open.
    [[nodiscard]] static std::unique_ptr<RememberedWorkspace> open(const std::string &path,
                                                                   const OpenOptions &options = {});
    /// Closes the project.
    ~RememberedWorkspace();
    RememberedWorkspace(const RememberedWorkspace &) = delete;
    RememberedWorkspace &operator=(const RememberedWorkspace &) = delete;

    /// Lets go of what was kept, so that the next one to ask opens the whole.
    void forget() const;

    /// The same rows as workspaceUnits() would give, one after the other. A row and its unit stand until `visit`
    /// returns, and the unit answers for its header only.
    void visitUnits(const std::function<void(const UnitRow &)> &visit) const;

  private:
    struct State;
    explicit RememberedWorkspace(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

} // namespace orchard
