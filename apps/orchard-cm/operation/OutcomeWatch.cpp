#include "apps/orchard-cm/operation/OutcomeWatch.h"

#include <algorithm>
#include <utility>

namespace orchard_cm {

namespace {

bool isCutOff(const CMToolRun &run) {
    using enum RunEnd::Kind;
    return run.end.kind == killedBySignal || run.end.kind == timedOut || run.end.kind == interrupted;
}

} // namespace

bool isFault(const CMOutcome &outcome) {
    using enum CMOutcome::Kind;
    return outcome.kind != done && outcome.kind != nothingToDo && outcome.kind != modelSaved;
}

OutcomeWatch::OutcomeWatch(Take take, MayBegin mayBegin)
    : take_(std::move(take)), mayBegin_(std::move(mayBegin)),
      before_(std::exchange(CMFacade::outcomeObserver(), this)) {}

OutcomeWatch::~OutcomeWatch() { CMFacade::outcomeObserver() = before_; }

void OutcomeWatch::report(const CMOutcome &outcome) {
    if (!isFault(fault_) && isFault(outcome)) {
        fault_ = outcome;
    }
    wasCutOff_ = wasCutOff_ || std::ranges::any_of(outcome.runs, isCutOff);
    if (take_) {
        take_(outcome);
    }
}

} // namespace orchard_cm
