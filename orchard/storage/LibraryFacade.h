// The library behind the host, where a program has one.
#pragma once

#include "CM/host/IBaseCMFacade.h"
#include "orchard/OrchardApi.h"

namespace orchard {

/// Sets what the host asks for the default header of new unit files of the active project from now on. It must
/// live until it is replaced; null for none: then the host reads the file itself, of which only "$OQROOT" is
/// replaced. That is also what it does for a project that is not the active one, such as one that is being made.
ORCHARD_API void setCMFacade(IBaseCMFacade *facade);

/// Null if there is none.
[[nodiscard]] IBaseCMFacade *cmFacade();

} // namespace orchard
