// Who runs the library's dialogs.
#pragma once

#include "CM/platform/dialog/DialogDriver.h"
#include "orchard/OrchardApi.h"

namespace orchard {

/// Sets the driver that runs dialogs from now on, which must live until it is replaced; null for none: then there
/// is no interface to the user, and the library takes the safe answers.
ORCHARD_API void setDialogDriver(platform::DialogDriver *driver);

} // namespace orchard
