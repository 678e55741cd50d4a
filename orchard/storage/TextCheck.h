// What the text of a unit file may hold, whatever its elements are.
#pragma once

#include "orchard/storage/FileText.h"

#include <optional>
#include <string_view>

namespace orchard {

/// The first byte from `from` on that XML can't hold or that is no UTF-8, or the first reference ("&...;") that
/// is none of XML's own; nothing if all is well.
[[nodiscard]] std::optional<Fault> firstTextFault(std::string_view text, std::size_t from);

/// Whether a text can be written to a unit file: UTF-8 without control characters but tab and line ends.
/// Else why not, in words that end a sentence.
[[nodiscard]] std::optional<std::string> faultOfValue(std::string_view value);

} // namespace orchard
