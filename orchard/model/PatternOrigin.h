// Finds the property that a pattern comes from; nearly every pattern is the value of one.
#pragma once

#include <string>
#include <string_view>

namespace orchard {

/// Describes a property with exactly this value: one set in an open project, else one of the installed sets. Empty
/// if there is none. Searches all of them, so use it only for messages.
[[nodiscard]] std::string originOfValue(std::string_view value);

/// From now on, reports an unusable pattern with its origin, in the log and to the user.
void reportPatternsWithTheirOrigin();

} // namespace orchard
