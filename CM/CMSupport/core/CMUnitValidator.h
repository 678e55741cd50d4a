// CMUnitValidator: a set of units that stays trustworthy while units are reloaded and replaced under it. A unit
// that a reload replaced can be told from one that is gone; the pointers put in are only compared, never followed,
// once their unit may be dead.
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

    /// Starts anew with the units of the list, which must be alive. Returns 1, also for an empty list.
    int init(const CMUnitList &units);
    /// Starts anew with one unit. 0 for null or a unit that gives no handle, else 1.
    int init(IUnit *unit);
    /// 1 if the unit is marked now; 0 for null, or if asking for its handle failed or faulted.
    int addUnit(IUnit *unit);
    /// 1 if the unit was marked, else 0.
    int removeUnit(IUnit *unit);
    /// Marks `newUnit` in the place of `oldUnit`, which may be dead. 0, with nothing changed, if either is null,
    /// `oldUnit` is not marked, `newUnit` is marked already, or can't be marked.
    int replaceUnit(IUnit *oldUnit, IUnit *newUnit);

    [[nodiscard]] bool isUnitMarkedForValidation(IUnit *unit) const;
    /// Whether the unit is marked and its handle still gives this very object.
    [[nodiscard]] bool isValidUnit(IUnit *unit) const;
    /// Refills `units` with what the handles give now, as far as these are units.
    void getValidUnitList(CMUnitList &units) const;
    /// Gives all handles back.
    void reset();

  private:
    CMap<IUnit *, IUnit *, IHandle *, IHandle *> handles_; ///< the handles are owned
};
