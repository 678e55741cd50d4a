// HostSetup: what the program plugs into the reference host and the library, for as long as it lives.
#pragma once

#include "apps/orchard-cm/base/Output.h"
#include "apps/orchard-cm/model/Answers.h"
#include "apps/orchard-cm/model/Journal.h"
#include "apps/orchard-cm/options/GlobalOptions.h"

#include <functional>
#include <memory>

namespace orchard_cm {

class HostSetup {
  public:
    /// All must outlive the setup, of which there is one at a time. Throws a Failure of usage if the log file
    /// can't be opened.
    HostSetup(const GlobalOptions &options, Output &output, Journal &journal);
    ~HostSetup();
    HostSetup(const HostSetup &) = delete;
    HostSetup &operator=(const HostSetup &) = delete;

    /// What saves the model when an operation asks for it. It may throw.
    void onSave(std::function<void()> save);
    /// How many runs of the tool are to come, for the progress on a terminal.
    void expectRuns(std::size_t count);
    /// The CM output window: that of the program.
    [[nodiscard]] std::ostream &window();
    /// Sends what is meant for the window elsewhere; null: to the window again.
    void setWindow(std::ostream *stream);

  private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace orchard_cm
