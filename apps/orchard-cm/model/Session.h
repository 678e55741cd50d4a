// Session: one loaded project for the length of the program, with the library's callbacks set.
#pragma once

#include "CM/host/IProject.h"
#include "apps/orchard-cm/base/Output.h"
#include "apps/orchard-cm/options/GlobalOptions.h"

#include <string>

namespace orchard_cm {

class Session {
  public:
    /// Sets up the host and the library; opens nothing yet. Both arguments must outlive the session.
    Session(const GlobalOptions &options, Output &output);
    /// Closes the project. What was changed and not saved is lost.
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /// The project, opened at the first call. Throws a Failure if there is none or it can't be read.
    [[nodiscard]] IProject &project();
    /// Saves what is modified. Throws a Failure that names the first file that could not be saved.
    void save();

  private:
    [[nodiscard]] std::string projectFile() const;
    void open();

    const GlobalOptions &options_;
    Output &output_;
    IProject *project_ = nullptr;
};

} // namespace orchard_cm
