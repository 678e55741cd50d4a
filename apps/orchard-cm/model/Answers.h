// Answers: what stands for the user when an operation asks.
#pragma once

#include "CM/platform/dialog/DialogDriver.h"
#include "apps/orchard-cm/base/Output.h"
#include "apps/orchard-cm/model/Journal.h"
#include "apps/orchard-cm/options/GlobalOptions.h"

namespace orchard_cm {

/// Runs dialogs with the answer that the options give. Without one they go to `terminal`; with nobody there
/// either, or after Ctrl-C, the answer is No. Every question and its answer
/// is noted in the journal and told to the user.
class AnsweringDriver : public platform::DialogDriver {
  public:
    /// `terminal` is null without one. All must outlive the driver.
    AnsweringDriver(Answer answer, platform::DialogDriver *terminal, Output &output, Journal &journal)
        : answer_(answer), terminal_(terminal), output_(output), journal_(journal) {}

    [[nodiscard]] bool run(CDialog &dialog) override;

  private:
    Answer answer_;
    platform::DialogDriver *terminal_;
    Output &output_;
    Journal &journal_;
};

} // namespace orchard_cm
