// Converts text for a terminal, and interprets what is typed there.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orchard {

/// Returns the text with "?" in place of each control character other than newline and tab, and without carriage
/// returns, so that output of a tool can't move the cursor or change the terminal.
std::string forTerminal(std::string_view text);
/// Returns the text without white space at its ends.
std::string_view trimmed(std::string_view text);
/// Returns the whole number that the text spells, or no value.
std::optional<int> wholeNumber(std::string_view text);
/// Returns the index of the option that was typed: its number from 1, or the beginning of its text regardless of
/// case. If several options match, returns the one that is a prefix of all the others; if there is none, returns
/// no value.
std::optional<std::size_t> typedOption(std::string_view typed, const std::vector<std::string> &options);

} // namespace orchard
