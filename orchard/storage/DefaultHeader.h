// The header that a new unit file gets.
#pragma once

#include "orchard/model/Element.h"

#include <string>

namespace orchard {

/// The text of the file that the property HeaderFile of the element's CM tool names ("$OQROOT" stands for the
/// installation root), or the empty text.
[[nodiscard]] std::string defaultHeaderOf(const Element &element);

} // namespace orchard
