// Examines a pattern before it is used, for checks of property sets.
#pragma once

#include "orchard/OrchardApi.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orchard {

struct PatternFacts {
    std::string mistake;                 ///< why the pattern is invalid; empty if it is valid
    std::optional<std::size_t> position; ///< of the mistake: bytes from the start of the pattern, counted from 0
    std::size_t groups = 0;
    bool matchesEmptyText = false;
};

/// Examines a pattern that ignores case, as patterns from properties do. Reports nothing.
[[nodiscard]] ORCHARD_API PatternFacts examinePattern(std::string_view pattern);

} // namespace orchard
