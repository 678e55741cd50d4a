// Brings an item of the archive into the model after the provider has written its file.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/CMSupport/provider/ProviderRun.h"

namespace provider {

/// Reloads the item's unit in place if the host can and the unit's directory is the item's; loads the file into
/// the model otherwise. A file that can't be loaded is reported where the tool's property says.
void reloadItem(ProviderRun &run, const CMArchiveItem &item, OutcomeReport &report);

} // namespace provider
