// Item: a unit, or a file of the archive, while an operation works on it.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/host/IUnit.h"
#include "apps/orchard-cm/model/UnitHandle.h"
#include "apps/orchard-cm/operation/ItemResult.h"

#include <memory>
#include <string>

namespace orchard_cm {

struct Item {
    ItemResult result;
    std::unique_ptr<UnitHandle> handle;         ///< null where the model has no unit for it yet
    std::unique_ptr<CMArchiveItem> archiveItem; ///< null for a unit of the workspace
    bool reloadFailed = false;                  ///< only where the program reloads
};

/// An item as it is before the operation; `unit` may be null.
Item itemOf(IUnit *unit, const std::string &file);
/// The unit as it is now, or null.
IUnit *unitNow(const Item &item);
/// Fills in what the operation left: a unit may bear another name, and its file too.
void lookAgain(Item &item);

} // namespace orchard_cm
