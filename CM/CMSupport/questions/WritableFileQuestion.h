// WritableFileQuestion: asks whether a check out may overwrite a file that is writable and so may hold changes of
// its own.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/host/IUnit.h"

class WritableFileQuestion {
  public:
    /// Reads the tool property "AskOnCheckoutReadWrite". Anything but "No" asks, a missing property included.
    WritableFileQuestion();
    /// True if the unit's file may be overwritten: nothing to ask, or the answer was yes.
    [[nodiscard]] bool mayOverwrite(const IUnit &unit) const;
    /// The same for the unit that the item belongs to; an item without one raises no question.
    [[nodiscard]] bool mayOverwrite(const CMArchiveItem &item) const;

  private:
    bool asks_;
};
