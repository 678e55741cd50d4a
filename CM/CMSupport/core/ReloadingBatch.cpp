#include "CM/CMSupport/core/ReloadingBatch.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/CMSupport/core/OutcomeReport.h"

namespace core {

void ReloadingBatch::open() const {
    if (!units_.IsEmpty()) {
        openReloads();
    }
}

void ReloadingBatch::start() {
    CMFacade::removeDuplicatesFromItemList(units_);
    validator_.init(units_);
    next_ = units_.GetHeadPosition();
}

IUnit *ReloadingBatch::next() {
    while (next_) {
        current_ = next_;
        IUnit *const unit = units_.GetNext(next_);
        if (isAlive(unit)) {
            return unit;
        }
        OutcomeReport::ofDeadUnit(unit).send();
    }
    return nullptr;
}

bool ReloadingBatch::isAlive(IUnit *unit) const {
    return !validator_.isUnitMarkedForValidation(unit) || validator_.isValidUnit(unit);
}

CMUnitList ReloadingBatch::alive() const {
    CMUnitList units;
    for (IUnit *const unit : units_) {
        if (isAlive(unit)) {
            units.AddTail(unit);
        }
    }
    return units;
}

void ReloadingBatch::replace(IUnit *unit, IUnit *reloaded) {
    if (current_) {
        units_.SetAt(current_, reloaded);
    }
    validator_.replaceUnit(unit, reloaded);
}

void ReloadingBatch::remove() {
    if (current_) {
        units_.RemoveAt(current_);
        current_ = {};
    }
}

void ReloadingBatch::close() {
    if (!units_.IsEmpty()) {
        closeReloads(); // required: not for a list that the walk has emptied
    }
    // This puts a unit whose reload failed back if the host kept it. Test:
    // CheckOutReload.AUnitThatTheHostHasKeptAfterAFailedReloadComesBackFromTheValidator.
    validator_.getValidUnitList(units_);
}

} // namespace core
