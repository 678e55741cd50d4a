// Writes the text of a unit file: the same unit always gives the same text, one fact a line.
#pragma once

#include "orchard/model/UnitElement.h"

#include <string>
#include <string_view>

namespace orchard {

/// True, and `text` is the whole file; else false, and `fault` says what can't be written.
[[nodiscard]] bool writeUnit(const UnitElement &unit, std::string_view header, std::string &text,
                             std::string &fault);

} // namespace orchard
