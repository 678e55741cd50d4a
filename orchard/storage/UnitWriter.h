// Writes the text of a unit file, one item per line; the same unit always yields the same text.
#pragma once

#include "orchard/model/UnitElement.h"

#include <string>
#include <string_view>

namespace orchard {

/// Returns true with the complete file in `text`, or false with `fault` naming what can't be written.
[[nodiscard]] bool writeUnit(const UnitElement &unit, std::string_view header, std::string &text,
                             std::string &fault);

} // namespace orchard
