// PatternCheck: what is to be known of a pattern before it is used, for those who check property sets.
#pragma once

#include "orchard/OrchardApi.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orchard {

struct PatternFacts {
    std::string mistake;                 ///< why it is no valid pattern; empty for a valid one
    std::optional<std::size_t> position; ///< of the mistake: bytes from the start of the pattern, counted from 0
    std::size_t groups = 0;
    bool matchesEmptyText = false;
};

/// Looks at a pattern without regard to case, as all that are read from properties are used. Reports nothing.
[[nodiscard]] ORCHARD_API PatternFacts examinePattern(std::string_view pattern);

} // namespace orchard
