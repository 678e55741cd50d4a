#include "CM/CMSupport/core/CMUnitValidator.h"

#include "CM/CMSupport/core/Quietly.h"
#include "CM/platform/FaultGuard.h"

CMUnitValidator::~CMUnitValidator() { reset(); }

int CMUnitValidator::init(const CMUnitList &units) {
    reset();
    handles_.InitHashTable(units.GetCount());
    const platform::FaultHandlers handlers; // once, and not for each unit
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
    IHandle *handle = nullptr;
    platform::runGuarded([&handle, unit] { handle = unit->getHandle(); });
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
    handle->release();
    handles_.RemoveKey(unit);
    return 1;
}

int CMUnitValidator::replaceUnit(IUnit *oldUnit, IUnit *newUnit) {
    if (oldUnit == nullptr || newUnit == nullptr || !isUnitMarkedForValidation(oldUnit) ||
        isUnitMarkedForValidation(newUnit) || addUnit(newUnit) == 0) {
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
    // The live object is brought to the type of the pointer, not the other way round: that one may be dead.
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
        core::quietly([&owned = *handle] { owned.release(); }); // the others are to be given back all the same
    }
    handles_.RemoveAll();
}
