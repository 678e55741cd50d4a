// Observes what the library reports about the items of an operation.
#pragma once

#include "CM/CMSupport/core/CMFacade.h"

#include <functional>
#include <string>

namespace orchard_cm {

/// Returns whether the outcome is that of an item that was not done.
[[nodiscard]] bool isFault(const CMOutcome &outcome);

/// Observes the library as long as this object exists; the destructor restores the previous observer.
class OutcomeWatch final : public CMOutcomeObserver {
  public:
    using Take = std::function<void(const CMOutcome &)>;
    using MayBegin = std::function<bool(const CMOutcome &)>;
    /// `take` gets each outcome; `mayBegin` decides whether an item begins. Both may be empty.
    explicit OutcomeWatch(Take take = {}, MayBegin mayBegin = {});
    ~OutcomeWatch();
    OutcomeWatch(const OutcomeWatch &) = delete;
    OutcomeWatch &operator=(const OutcomeWatch &) = delete;

    /// Returns the first reported fault; its kind is `done` if there was none.
    [[nodiscard]] const CMOutcome &fault() const { return fault_; }
    /// Returns the reason of that fault; empty if there was none.
    [[nodiscard]] std::string reason() const { return fault_.reason.str(); }
    /// Returns whether a run was started but was cut short, so that its effects are unknown.
    [[nodiscard]] bool wasCutOff() const { return wasCutOff_; }

  private:
    bool mayBegin(const CMOutcome &next) override { return !mayBegin_ || mayBegin_(next); }
    void report(const CMOutcome &outcome) override;

    Take take_;
    MayBegin mayBegin_;
    CMOutcomeObserver *before_;
    CMOutcome fault_;
    bool wasCutOff_ = false;
};

} // namespace orchard_cm
