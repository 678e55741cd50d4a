// Answers the library's dialogs: from the command-line options, on the terminal, or with the safe answer.
#pragma once

#include "CM/platform/dialog/CDialog.h"
#include "apps/orchard-cm/base/Output.h"
#include "apps/orchard-cm/options/GlobalOptions.h"

namespace orchard_cm {

/// Shows messages as the program's own. Answers questions as the options say, otherwise asks on the terminal.
/// Without a terminal, and after Ctrl-C, gives the safe answer.
class AnsweringDriver : public platform::DialogDriver {
  public:
    /// `terminal` is null if there is none. All arguments must outlive the driver.
    AnsweringDriver(Answer answer, platform::DialogDriver *terminal, Output &output)
        : answer_(answer), terminal_(terminal), output_(output) {}

    [[nodiscard]] bool run(CDialog &dialog) override;
    [[nodiscard]] bool answersInAdvance(const CDialog &dialog) const override;

  private:
    void show(const CDialog &message);
    void report(const CDialog &question, const CButton &answer, const std::string &why);

    Answer answer_;
    platform::DialogDriver *terminal_;
    Output &output_;
};

} // namespace orchard_cm
