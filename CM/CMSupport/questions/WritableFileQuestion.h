// Asks whether a check out may overwrite a file that is writable and so may contain changes of the user.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/host/IUnit.h"

class WritableFileQuestion {
  public:
    /// Reads the tool property "AskOnCheckoutReadWrite". Any value but "No" asks, as does a missing
    /// property.
    WritableFileQuestion();
    /// Returns true if the unit's file may be overwritten: there is nothing to ask, or the answer was yes.
    [[nodiscard]] bool mayOverwrite(const IUnit &unit) const;
    /// Does the same for the item's unit. Returns true for an item without a unit.
    [[nodiscard]] bool mayOverwrite(const CMArchiveItem &item) const;

  private:
    bool asks_;
};
