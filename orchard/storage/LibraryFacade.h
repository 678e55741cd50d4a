// Gives the host access to the library, in programs that have one.
#pragma once

#include "CM/host/IBaseCMFacade.h"
#include "orchard/OrchardApi.h"

namespace orchard {

/// Sets the library object that provides the default header of new unit files of the active project. It must live
/// until it is replaced. With null, the host reads the file itself and replaces only "$OQROOT", as it does for a
/// project that is not active, such as one that is being created.
ORCHARD_API void setCMFacade(IBaseCMFacade *facade);

/// Returns null if there is none.
[[nodiscard]] IBaseCMFacade *cmFacade();

} // namespace orchard
