// Describes a path that no command template can quote.
#pragma once

#include <string>
#include <string_view>

namespace paths {

/// Returns what platform::findUnquotable finds in the path, in words for the user that complete "it contains ...";
/// empty if the path can be quoted.
[[nodiscard]] std::string unquotableIn(std::string_view path);

/// Returns the path with "?" for each control character, to show a path that can't be trusted.
[[nodiscard]] std::string shownPath(std::string_view path);

} // namespace paths
