// Returns the header that a new unit file gets.
#pragma once

#include "orchard/model/Element.h"

#include <string>

namespace orchard {

/// The text of the file that the property HeaderFile of the element's CM tool names, or an empty text. For the
/// active project it is obtained from the library if the program has one (see LibraryFacade.h).
[[nodiscard]] std::string defaultHeaderOf(const Element &element);

} // namespace orchard
