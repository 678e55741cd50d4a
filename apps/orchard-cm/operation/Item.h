// Defines Item: a unit, or a file of the archive, while an operation works on it.
#pragma once

#include "CM/CMSupport/core/CMOutcome.h"
#include "CM/host/IUnit.h"
#include "apps/orchard-cm/model/UnitHandle.h"
#include "apps/orchard-cm/operation/ItemResult.h"

#include <memory>
#include <string>

namespace orchard_cm {

struct Item {
    ItemResult result;
    std::unique_ptr<UnitHandle> handle; ///< null if the model has no unit for it yet
    bool isReported = false;            ///< whether the library has reported an outcome for it
    bool isFileReported = false;        ///< whether that outcome contains the state of the file
    bool hasRun = false;                ///< whether the tool worked on it
};

/// Returns the item in its state before the operation; `unit` may be null.
Item itemOf(IUnit *unit, const std::string &file);
/// Returns the unit as it is now, or null.
IUnit *unitNow(const Item &item);
/// Records what the library reports about the item, and with `keepsOutput` also the tool's output.
void take(Item &item, const CMOutcome &outcome, bool keepsOutput);
/// Records the item's state after the operation; the unit and its file may have new names.
void recordStateAfter(Item &item);

} // namespace orchard_cm
