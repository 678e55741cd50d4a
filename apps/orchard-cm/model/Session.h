// Defines Session: the program as a host of the library, with one loaded project.
#pragma once

#include "CM/host/IProject.h"
#include "CM/host/IUnit.h"
#include "apps/orchard-cm/base/Output.h"
#include "apps/orchard-cm/model/Answers.h"
#include "apps/orchard-cm/options/GlobalOptions.h"
#include "orchard/locking/ProjectLock.h"
#include "orchard/storage/Projects.h"

#include <functional>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace orchard_cm {

class HostSetup;

/// Keeps other programs from changing the project while it lives.
struct ReleaseProject {
    void operator()(orchard::ProjectLock *lock) const { lock->release(); }
};
using ProjectHold = std::unique_ptr<orchard::ProjectLock, ReleaseProject>;

class Session {
  public:
    /// Sets up the host and the library; opens nothing yet. Both arguments must outlive the session, of which
    /// there is one at a time.
    Session(const GlobalOptions &options, Output &output);
    /// Leaves the project open, because the end of the process frees it far more quickly. Unsaved changes are
    /// lost.
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /// Returns the project, which the first call opens. Throws a Failure if there is none or it can't be read.
    [[nodiscard]] IProject &project();
    /// Returns the project file that the options name, or the only one in the current directory. Throws a Failure
    /// if there is none.
    [[nodiscard]] std::string projectFile() const;
    /// Returns the options for opening a project: progress, warnings and cancelling.
    [[nodiscard]] orchard::OpenOptions openOptions();

    /// Lets the session work on another project than the options name. Call it before all else.
    void nameProject(const std::string &project) { named_ = project; }
    /// Reports an unfinished change, once, and leaves it as it is.
    void tellUnfinished();

    /// Waits until no other program changes the project, and holds it alone. What others have changed since it was
    /// opened is read again, so units have to be looked up after this call. Throws a Failure that names who holds
    /// the project if that takes longer than the options allow. A place where nothing can be locked is reported as
    /// a warning, and not held.
    ///
    /// Then finishes a change that an earlier command has left unfinished, or takes it back, and reports which.
    /// Throws a Failure if that can't be done.
    [[nodiscard]] ProjectHold holdAlone();
    /// Returns whether holdAlone() has finished what this command was to do when it was given before.
    [[nodiscard]] bool hasFinished(const std::string &command) const;
    /// Holds the project alone, and leaves an unfinished change as it is.
    [[nodiscard]] ProjectHold holdUnfinished();
    /// Does the same for work that changes only the files of the units that `units` looks up; others can work on
    /// other units at the same time.
    [[nodiscard]] ProjectHold holdUnits(const std::function<std::vector<IUnit *>()> &units);

    /// Saves all modified units. Throws a Failure that names each file that could not be saved, or who holds the
    /// project.
    void save();
    /// Does the same if any unit is modified; otherwise nothing is written.
    void saveIfModified();

    [[nodiscard]] HostSetup &setup() { return *setup_; }

  private:
    void open();
    void settle();
    orchard::ProjectLock &lock();
    [[nodiscard]] orchard::LockWaiting waiting();
    void require(orchard::ProjectLock::Answer answer);
    [[nodiscard]] ProjectHold
        hold(orchard::ProjectLock::Answer (orchard::ProjectLock::*how)(const orchard::LockWaiting &));
    void readAgainIfChanged();
    [[nodiscard]] bool isModified();

    const GlobalOptions &options_;
    Output &output_;
    std::unique_ptr<HostSetup> setup_;
    IProject *project_ = nullptr;
    std::optional<orchard::ProjectLock> lock_;
    bool isUnlockable_ = false; ///< the place allows no lock, which was reported
    bool hasTold_ = false;      ///< of an unfinished change
    std::string named_;         ///< the project, if it is not that of the options
    std::string finished_;      ///< the command whose change was finished
};

/// Holds back the text for the CM output window as long as this object exists; used where the text would only
/// repeat the command's result.
class WindowHold {
  public:
    explicit WindowHold(Session &session);
    ~WindowHold();
    WindowHold(const WindowHold &) = delete;
    WindowHold &operator=(const WindowHold &) = delete;
    /// Writes the text to the window after all.
    void release();

  private:
    Session &session_;
    std::ostringstream kept_;
};

} // namespace orchard_cm
