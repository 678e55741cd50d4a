// Asks whether a check out may overwrite a file that is writable and so may contain changes of the user.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/host/IUnit.h"

class ORC_CM_API WritableFileQuestion {
  public:
    /// Reads the tool property "AskOnCheckoutReadWrite". Any value but "No" asks, as does a missing
    /// property.
    WritableFileQuestion();
    /// Returns true if the unit's file may be overwritten: there is nothing to ask, or the answer was yes.
    [[nodiscard]] bool mayOverwrite(const IUnit &unit) const;
    /// Does the same for a file, given by its full name. Returns true for a file that doesn't exist.
    [[nodiscard]] bool mayOverwriteFile(const CString &file) const;
    /// Does the same for the item's unit. Returns true for an item without a unit.
    [[nodiscard]] bool mayOverwrite(const CMArchiveItem &item) const;
    // The same if the file that would be overwritten has another path than the unit's own.
    [[nodiscard]] bool mayOverwrite(const IUnit &unit, const CString &file) const;
    [[nodiscard]] bool mayOverwrite(const CMArchiveItem &item, const CString &file) const;

  private:
    /// Asks about the file, which the question calls by the two names.
    [[nodiscard]] bool ask(const CString &file, const CString &name, const CString &fullName) const;

    bool asks_;
};
