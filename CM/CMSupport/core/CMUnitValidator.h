// Keeps track of a set of units while reloads replace or delete them. The set distinguishes a unit that a reload
// replaced from one that is gone. A pointer whose unit may have been deleted is only compared, never dereferenced.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"
#include "CM/host/IHandle.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CMap.h"

class CMUnitValidator {
  public:
    CMUnitValidator() = default;
    CMUnitValidator(const CMUnitValidator &) = delete;
    CMUnitValidator &operator=(const CMUnitValidator &) = delete;
    ~CMUnitValidator();

    /// Replaces the set with the units of the list, which must exist. Always returns 1.
    int init(const CMUnitList &units);
    /// Replaces the set by one unit. Returns 0 for null or a unit that returns no handle, else 1.
    int init(IUnit *unit);
    /// Marks the unit. Returns 1 if it is marked now; 0 for null, or if the unit returned no handle or the call
    /// faulted.
    int addUnit(IUnit *unit);
    /// Removes the mark. Returns 1 if the unit was marked, else 0.
    int removeUnit(IUnit *unit);
    /// Marks `newUnit`, which must exist, instead of `oldUnit`, which may have been deleted. Returns 0, with
    /// nothing changed, if either is null, `oldUnit` is not marked, `newUnit` is marked already, or `newUnit`
    /// can't be marked. If a deleted unit had the address of `newUnit`, its mark remains and doesn't count as one
    /// of `newUnit`; getValidUnitList() still returns the new unit.
    int replaceUnit(IUnit *oldUnit, IUnit *newUnit);

    [[nodiscard]] bool isUnitMarkedForValidation(IUnit *unit) const;
    /// Returns whether the unit is marked and its handle still returns this object.
    [[nodiscard]] bool isValidUnit(IUnit *unit) const;
    /// Refills `units` with the units that the handles return now, in the order in which the units were marked.
    void getValidUnitList(CMUnitList &units) const;
    /// Releases all handles and empties the set.
    void reset();

  private:
    CMap<IUnit *, IUnit *, IHandle *, IHandle *> handles_; ///< owns the handles
};
