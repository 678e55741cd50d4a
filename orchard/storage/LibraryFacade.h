// Gives the host access to the library, in programs that have one.
#pragma once

#include "CM/host/IBaseCMFacade.h"
#include "orchard/OrchardApi.h"

namespace orchard {

/// Sets the library object that provides the default header of new unit files of the active project. It must live
/// until it is replaced. With null, the host reads the header file itself and replaces only "$OQROOT" in its name.
/// It also does this for projects that are not active, such as one being created.
ORCHARD_API void setCMFacade(IBaseCMFacade *facade);

/// Returns null if there is none.
[[nodiscard]] IBaseCMFacade *cmFacade();

} // namespace orchard
