// Checks the text of a unit file independently of its elements.
#pragma once

#include "orchard/storage/FileText.h"

#include <optional>
#include <string_view>

namespace orchard {

/// Finds the first byte at or after `from` that XML does not allow or that is not UTF-8, or the first reference
/// ("&...;") that XML does not predefine. Returns nothing if there is none.
[[nodiscard]] std::optional<Fault> firstTextFault(std::string_view text, std::size_t from);

/// Checks that a text can be written to a unit file: UTF-8 without control characters except tab and line ends.
/// Returns nothing if it can, else the reason, as a clause to be appended to a message.
[[nodiscard]] std::optional<std::string> faultOfValue(std::string_view value);

} // namespace orchard
