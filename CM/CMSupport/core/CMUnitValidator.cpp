#include "CM/CMSupport/core/CMUnitValidator.h"

#include "CM/CMSupport/core/Quietly.h"
#include "CM/platform/FaultGuard.h"

namespace {

/// Returns null if the unit returned no handle or the call faulted.
IHandle *handleOf(IUnit &unit) {
    IHandle *handle = nullptr;
    platform::runGuarded([&handle, &unit] { handle = unit.getHandle(); });
    return handle;
}

} // namespace

CMUnitValidator::~CMUnitValidator() { reset(); }

int CMUnitValidator::init(const CMUnitList &units) {
    reset();
    handles_.InitHashTable(units.GetCount());
    const platform::FaultHandlers handlers; // installed once instead of for each unit
    for (IUnit *const unit : units) {
        addUnit(unit);
    }
    return 1;
}

int CMUnitValidator::init(IUnit *unit) {
    reset();
    return addUnit(unit);
}

int CMUnitValidator::addUnit(IUnit *unit) {
    if (unit == nullptr) {
        return 0;
    }
    if (isUnitMarkedForValidation(unit)) {
        return 1;
    }
    IHandle *const handle = handleOf(*unit);
    if (handle == nullptr) {
        return 0;
    }
    handles_.SetAt(unit, handle);
    return 1;
}

int CMUnitValidator::removeUnit(IUnit *unit) {
    IHandle *handle = nullptr;
    if (unit == nullptr || !handles_.Lookup(unit, handle)) {
        return 0;
    }
    handles_.RemoveKey(unit); // before the release, so that a handle that throws is not released again
    handle->release();
    return 1;
}

int CMUnitValidator::replaceUnit(IUnit *oldUnit, IUnit *newUnit) {
    IHandle *oldHandle = nullptr;
    if (oldUnit == nullptr || newUnit == nullptr || !handles_.Lookup(oldUnit, oldHandle) || isValidUnit(newUnit)) {
        return 0;
    }
    if (isUnitMarkedForValidation(newUnit)) {
        // The new unit has the address of a deleted unit. The deleted unit's mark remains, because a list may
        // still contain the pointer and the handle may return another object. The new unit's handle is stored
        // under the old pointer.
        IHandle *const newHandle = handleOf(*newUnit);
        if (newHandle == nullptr) {
            return 0;
        }
        handles_.SetAt(oldUnit, newHandle);
        oldHandle->release();
        return 1;
    }
    if (addUnit(newUnit) == 0) {
        return 0;
    }
    removeUnit(oldUnit);
    return 1;
}

bool CMUnitValidator::isUnitMarkedForValidation(IUnit *unit) const {
    IHandle *handle = nullptr;
    return handles_.Lookup(unit, handle);
}

bool CMUnitValidator::isValidUnit(IUnit *unit) const {
    IHandle *handle = nullptr;
    if (!handles_.Lookup(unit, handle)) {
        return false;
    }
    // Casts the object that the handle returns and not the pointer, whose object may have been deleted.
    const auto *const living = dynamic_cast<const IUnit *>(handle->doGetObject());
    return living != nullptr && living == unit;
}

void CMUnitValidator::getValidUnitList(CMUnitList &units) const {
    units.RemoveAll();
    for (const auto &[unit, handle] : handles_) {
        if (auto *const living = dynamic_cast<IUnit *>(handle->doGetObject())) {
            units.AddTail(living);
        }
    }
}

void CMUnitValidator::reset() {
    for (const auto &[unit, handle] : handles_) {
        core::quietly([&owned = *handle] { owned.release(); }); // one that throws must not keep the others
    }
    handles_.RemoveAll();
}
