// Connects the program to the reference host and the library for as long as the object exists.
#pragma once

#include "apps/orchard-cm/base/Output.h"
#include "apps/orchard-cm/model/Answers.h"
#include "apps/orchard-cm/options/GlobalOptions.h"

#include <functional>
#include <memory>

namespace orchard_cm {

class HostSetup {
  public:
    /// Both arguments must outlive the setup, of which there is one at a time. Throws a Failure with
    /// ExitCode::usage if the log file can't be opened.
    HostSetup(const GlobalOptions &options, Output &output);
    ~HostSetup();
    HostSetup(const HostSetup &) = delete;
    HostSetup &operator=(const HostSetup &) = delete;

    /// Sets the function that saves the model when an operation asks for it. It may throw.
    void onSave(std::function<void()> save);
    /// Begins an operation that runs the tool `count` times, for the progress display on a terminal.
    void expectRuns(std::size_t count);
    /// Returns whether the operation may begin a further step: false after Ctrl-C, and from the moment at which a
    /// run of the tool has exceeded its time limit until the next operation. No tool is started then.
    [[nodiscard]] bool mayGoOn() const;
    /// Returns the stream of the CM output window, which is the program's own.
    [[nodiscard]] std::ostream &window();
    /// Sends what is meant for the window to another stream; with null, to the window again.
    void setWindow(std::ostream *stream);

  private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace orchard_cm
