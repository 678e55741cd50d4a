// Walks a caller's list of units while reloads replace or delete the units in it.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"
#include "CM/CMSupport/core/CMUnitValidator.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CList.h"

namespace core {

/// Call open(), start(), next() until it returns null, then close(). An operation that ends early makes no further
/// calls; the destructor does nothing.
class ReloadingBatch {
  public:
    /// `units` must outlive the batch.
    explicit ReloadingBatch(CMUnitList &units) : units_(units) {}
    ReloadingBatch(const ReloadingBatch &) = delete;
    ReloadingBatch &operator=(const ReloadingBatch &) = delete;

    /// Calls the host's callback before reloads, unless the list is empty.
    void open() const;
    /// Removes duplicates and null entries from the list, and starts the walk at its head.
    void start();
    /// Returns the next unit, or null at the end. Skips units that no longer exist because of an earlier reload,
    /// and reports them as gone.
    IUnit *next();
    /// Returns whether a unit of the list is still in the model.
    [[nodiscard]] bool isAlive(IUnit *unit) const;
    /// Returns the units of the list that are.
    [[nodiscard]] CMUnitList alive() const;
    /// Replaces `unit`, which next() returned and which may be dead by now, by `reloaded`: in the entry that
    /// next() returned last, unless that was removed, and in what close() fills into the list.
    void replace(IUnit *unit, IUnit *reloaded);
    /// Removes the entry that next() returned last from the list, once. If the host has kept the unit, close()
    /// puts it back.
    void remove();
    /// Calls the host's callback after reloads, unless the list has become empty. Then refills the list with the
    /// units that still exist, in the validator's order.
    void close();

  private:
    CMUnitList &units_;
    CMUnitValidator validator_;
    CMUnitList::POSITION next_{};
    CMUnitList::POSITION current_{};
};

} // namespace core
