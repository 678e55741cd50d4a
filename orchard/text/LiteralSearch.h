// Finding plain text in a text of any length.
#pragma once

#include <cstddef>
#include <string_view>

namespace orchard {

/// ASCII letters only; every other byte comes back as it is.
char lowerCase(char c);
char upperCase(char c);

/// The first position at or behind `from` where `what` stands without regard to the case of ASCII letters, or
/// npos. `what` must not be empty.
std::size_t findIgnoringCase(std::string_view text, std::string_view what, std::size_t from);

/// The first position at or behind `from` where `what` stands, or npos. `what` must not be empty. Quick also where
/// its first character stands often.
std::size_t findText(std::string_view text, std::string_view what, std::size_t from);

} // namespace orchard
