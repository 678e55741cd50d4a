// Session: the program as a host of the library, with one loaded project.
#pragma once

#include "CM/host/IProject.h"
#include "apps/orchard-cm/base/Output.h"
#include "apps/orchard-cm/model/Answers.h"
#include "apps/orchard-cm/model/Journal.h"
#include "apps/orchard-cm/options/GlobalOptions.h"

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
    /// Closes the project. What was changed and not saved is lost.
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /// The project, opened at the first call. Throws a Failure if there is none or it can't be read.
    [[nodiscard]] IProject &project();
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
    void open();

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
