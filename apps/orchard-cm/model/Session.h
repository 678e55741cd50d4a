// Session: the program as a host of the library, with one loaded project.
#pragma once

#include "CM/host/IProject.h"
#include "apps/orchard-cm/base/Output.h"
#include "apps/orchard-cm/model/Answers.h"
#include "apps/orchard-cm/model/Journal.h"
#include "apps/orchard-cm/options/GlobalOptions.h"
#include "orchard/storage/Projects.h"

#include <functional>
#include <memory>
#include <sstream>
#include <string>

namespace orchard_cm {

class HostSetup;

class Session {
  public:
    /// Sets up the host and the library; opens nothing yet. Both arguments must outlive the session, of which
    /// there is one at a time.
    Session(const GlobalOptions &options, Output &output);
    /// The project stays open: the end of the process frees it far quicker than we could. What was changed and not
    /// saved is lost.
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /// The project, opened at the first call. Throws a Failure if there is none or it can't be read.
    [[nodiscard]] IProject &project();
    /// The rows of orchard::workspaceUnits(), one after the other. If the project isn't open yet, a large one of
    /// which no file has changed since it was last listed is not read for it. A row and its unit stand until
    /// `visit` returns; the unit is good for asking about its header only.
    void visitUnits(const std::function<void(const orchard::UnitRow &)> &visit);
    /// Saves what is modified. Throws a Failure that names each file that could not be saved.
    void save();
    /// The same if any unit is modified; else nothing is written.
    void saveIfModified();

    /// Empties the journal for an operation that is to run the tool some `expectedRuns` times. With `keepsOutput`
    /// it keeps what the tool writes.
    Journal &startJournal(std::size_t expectedRuns, bool keepsOutput = false);
    [[nodiscard]] const Journal &journal() const { return journal_; }
    [[nodiscard]] HostSetup &setup() { return *setup_; }

  private:
    [[nodiscard]] std::string projectFile() const;
    [[nodiscard]] orchard::OpenOptions openOptions();
    void open();
    /// False if the project has to be opened for it.
    [[nodiscard]] bool visitRemembered(const std::function<void(const orchard::UnitRow &)> &visit);

    const GlobalOptions &options_;
    Output &output_;
    Journal journal_;
    std::unique_ptr<HostSetup> setup_;
    IProject *project_ = nullptr;
};

/// Keeps what goes to the CM output window while it lives, where that would only repeat the command's result.
class WindowHold {
  public:
    explicit WindowHold(Session &session);
    ~WindowHold();
    WindowHold(const WindowHold &) = delete;
    WindowHold &operator=(const WindowHold &) = delete;
    /// Lets the window have it after all.
    void release();

  private:
    Session &session_;
    std::ostringstream kept_;
};

} // namespace orchard_cm
