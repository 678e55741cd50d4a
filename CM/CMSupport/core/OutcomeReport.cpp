#include "CM/CMSupport/core/OutcomeReport.h"

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMTranscation.h"
#include "CM/CMSupport/core/RunFault.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/IUnit.h"
#include "CM/platform/Files.h"

#include <utility>

namespace {
bool isObserved() { return CMFacade::outcomeObserver() != nullptr; }
} // namespace

OutcomeReport::OutcomeReport(const CString &directory) { outcome_.file = directory; }

OutcomeReport::OutcomeReport(IUnit &unit) {
    outcome_.unit = outcome_.unitNow = &unit;
    if (isObserved()) {
        outcome_.file = unit.getFullFileName();
        before_ = snapshotOf(outcome_.file);
    }
}

OutcomeReport::OutcomeReport(CMArchiveItem &item) {
    outcome_.item = &item;
    if (isObserved()) {
        outcome_.file = item.getFullUnitFileName();
        before_ = snapshotOf(outcome_.file);
    }
}

OutcomeReport OutcomeReport::ofDeadUnit(IUnit *unit) {
    OutcomeReport report;
    report.outcome_.unit = unit;
    report.fail(CMOutcome::Kind::gone, resources::Text::outcomeGone);
    return report;
}

bool OutcomeReport::mayBegin() const {
    CMOutcomeObserver *const observer = CMFacade::outcomeObserver();
    return observer == nullptr || observer->mayBegin(outcome_);
}

void OutcomeReport::fail(CMOutcome::Kind kind, const CString &reason) {
    if (outcome_.kind == CMOutcome::Kind::done) {
        outcome_.kind = kind;
        outcome_.reason = reason;
        outcome_.reason.TrimRight();
    }
}

void OutcomeReport::fail(CMOutcome::Kind kind, resources::Text reason) { fail(kind, resources::text(reason)); }

void OutcomeReport::lacksCommand(const CString &key) {
    uses(key);
    fail(CMOutcome::Kind::noCommand, resources::format(resources::Text::outcomeNoCommand, {key}));
}

void OutcomeReport::lacksValue(const CString &key, const CString &variable) {
    uses(key);
    fail(CMOutcome::Kind::notExpanded, resources::format(resources::Text::outcomeUnresolved, {key, variable}));
}

void OutcomeReport::ran(CMToolRun run) {
    if (const CString fault = faultOf(run); !fault.IsEmpty()) {
        fail(CMOutcome::Kind::failed, fault);
    }
    outcome_.runs.push_back(std::move(run));
}

void OutcomeReport::printed(CString output) {
    if (!outcome_.runs.empty() && outcome_.runs.back().output.IsEmpty()) {
        outcome_.runs.back().output = std::move(output);
    }
}

void OutcomeReport::reloaded(CMOutcome::Reload how, IUnit *now) {
    outcome_.reload = how;
    outcome_.unitNow = now;
}

void OutcomeReport::notLoaded(const CString &reason) {
    fail(CMOutcome::Kind::notLoaded, reason);
    outcome_.unitNow = nullptr;
}

CString OutcomeReport::fileNow() const {
    return outcome_.unitNow != nullptr ? outcome_.unitNow->getFullFileName() : outcome_.file;
}

void OutcomeReport::sendAs(CMOutcome::Kind kind) {
    outcome_.kind = kind;
    send();
}

void OutcomeReport::send() {
    CMOutcomeObserver *const observer = CMFacade::outcomeObserver();
    if (observer == nullptr) {
        return;
    }
    const CMTranscation *const transaction = CMTranscation::getCurTranscation();
    outcome_.operation = transaction == nullptr ? CMTxnTool : transaction->getTranscationType();
    if (outcome_.unit != nullptr || outcome_.item != nullptr) {
        const CString file = fileNow();
        const FileSnapshot after = snapshotOf(file);
        outcome_.fileExists = after.exists;
        outcome_.fileWritable = platform::hasWritePermission(file);
        outcome_.fileChanged = after != before_;
    }
    observer->report(outcome_);
}
