// Sets who runs the dialogs, including message boxes.
#pragma once

#include "CM/platform/dialog/DialogDriver.h"
#include "orchard/OrchardApi.h"

namespace orchard {

/// Sets the driver that runs dialogs from now on. It must exist until it is replaced. With null there is nobody to
/// ask: messages go to the standard error stream, and each question gets the safe answer.
ORCHARD_API void setDialogDriver(platform::DialogDriver *driver);
/// Returns the driver, or null if there is none.
[[nodiscard]] platform::DialogDriver *dialogDriver();

} // namespace orchard
