// Steps around a batch, and before an item, that several operations take.
#pragma once

#include "CM/host/IUnit.h"

namespace command {

/// Calls the host's save callback; false if none is set.
bool saveModel();

/// The host's callbacks around a batch that reloads units. The host has set them: there is no test for null,
/// deliberately.
void openReloads();
void closeReloads();

/// Makes the unit's own archive the main archive, unless there is one archive for the whole project.
void selectArchive(const IUnit &unit);

} // namespace command
