// Records the outcomes that are reported during a test and returns them as lines of text.
#pragma once

#include "CM/CMSupport/core/CMFacade.h"

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace support {

inline const char *nameOf(CMOutcome::Kind kind) {
    switch (kind) {
    case CMOutcome::Kind::done:
        return "done";
    case CMOutcome::Kind::nothingToDo:
        return "nothingToDo";
    case CMOutcome::Kind::leftOut:
        return "leftOut";
    case CMOutcome::Kind::gone:
        return "gone";
    case CMOutcome::Kind::declined:
        return "declined";
    case CMOutcome::Kind::refused:
        return "refused";
    case CMOutcome::Kind::noTool:
        return "noTool";
    case CMOutcome::Kind::noCommand:
        return "noCommand";
    case CMOutcome::Kind::notExpanded:
        return "notExpanded";
    case CMOutcome::Kind::failed:
        return "failed";
    case CMOutcome::Kind::notLoaded:
        return "notLoaded";
    case CMOutcome::Kind::modelSaved:
        return "modelSaved";
    }
    return "?";
}

/// Observes while it lives.
class OutcomeRecorder final : public CMOutcomeObserver {
  public:
    OutcomeRecorder() : before_(std::exchange(CMFacade::outcomeObserver(), this)) {}
    ~OutcomeRecorder() { CMFacade::outcomeObserver() = before_; }
    OutcomeRecorder(const OutcomeRecorder &) = delete;
    OutcomeRecorder &operator=(const OutcomeRecorder &) = delete;

    bool mayBegin(const CMOutcome &next) override { return !mayBeginIf || mayBeginIf(next); }
    void report(const CMOutcome &outcome) override { outcomes.push_back(outcome); }

    /// Returns a line for each outcome, such as "Pump.ocl done"; without a file name if there is no file.
    [[nodiscard]] std::vector<std::string> lines() const {
        std::vector<std::string> lines;
        for (const CMOutcome &outcome : outcomes) {
            const std::string name = std::filesystem::path(outcome.file.str()).filename().string();
            lines.push_back((name.empty() ? "" : name + " ") + nameOf(outcome.kind));
        }
        return lines;
    }
    /// Returns the outcome that was reported last.
    [[nodiscard]] const CMOutcome &last() const { return outcomes.at(outcomes.size() - 1); }

    std::vector<CMOutcome> outcomes;
    std::function<bool(const CMOutcome &)> mayBeginIf; ///< empty: each item begins

  private:
    CMOutcomeObserver *before_;
};

} // namespace support
