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
        if (!validator_.isUnitMarkedForValidation(unit) || validator_.isValidUnit(unit)) {
            return unit;
        }
        OutcomeReport::ofDeadUnit(unit).send();
    }
    return nullptr;
}

void ReloadingBatch::replace(IUnit *unit, IUnit *reloaded) {
    units_.SetAt(current_, reloaded);
    validator_.replaceUnit(unit, reloaded);
}

void ReloadingBatch::remove() { units_.RemoveAt(current_); }

void ReloadingBatch::close() {
    if (!units_.IsEmpty()) {
        closeReloads(); // required: not for a list that the walk has emptied
    }
    // This puts a unit whose reload failed back if the host kept it. Test:
    // CheckOutReload.AUnitThatTheHostHasKeptAfterAFailedReloadComesBackFromTheValidator.
    validator_.getValidUnitList(units_);
}

} // namespace core
