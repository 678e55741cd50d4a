// What a terminal is shown and what is typed at it, as pure text work.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orchard {

/// The text without control characters other than newline and tab, so that what a tool wrote can't move the cursor
/// or change the terminal.
std::string forTerminal(std::string_view text);
/// The text without white space at its ends.
std::string_view trimmed(std::string_view text);
/// The whole number that the text is, or no value.
std::optional<int> wholeNumber(std::string_view text);
/// The index of the option that was typed: its number from 1, or the beginning of its text without regard to
/// case if that fits one only, or one with which the others begin. No value otherwise.
std::optional<std::size_t> typedOption(std::string_view typed, const std::vector<std::string> &options);

} // namespace orchard
