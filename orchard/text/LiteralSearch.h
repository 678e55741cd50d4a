// Searches for plain text in a text of any length.
#pragma once

#include <cstddef>
#include <string_view>

namespace orchard {

/// Convert ASCII letters; other bytes are unchanged.
char lowerCase(char c);
char upperCase(char c);

/// Returns the first position of `what` at or after `from`, ignoring the case of ASCII letters, or npos. `what`
/// must not be empty.
std::size_t findIgnoringCase(std::string_view text, std::string_view what, std::size_t from);

/// Returns the first position of `what` at or after `from`, or npos. `what` must not be empty. Fast even if its
/// first character is frequent.
std::size_t findText(std::string_view text, std::string_view what, std::size_t from);

} // namespace orchard
