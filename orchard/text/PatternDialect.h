// Translates the pattern dialect of property values into that of the regular expression engine, and recognizes
// patterns that need no engine. Pure text processing.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orchard {

struct TranslatedPattern {
    std::string text; ///< what the engine compiles
    /// The positions in `text`, ascending, of the backslashes that the translation has inserted.
    std::vector<std::size_t> inserted;

    /// Returns the position in the original pattern for a position in `text`, both in bytes from 0.
    [[nodiscard]] std::size_t originalPosition(std::size_t position) const;
};

/// Translates a pattern for the engine. The dialect is that of the engine with one additional rule: in a bracket
/// expression that would remain open because its closing bracket follows a backslash, backslashes are ordinary
/// characters. So "[\]\$temp" is a class that contains a backslash, then a dollar and "temp". Needs time and
/// memory in proportion to the length of the pattern.
TranslatedPattern translatePattern(std::string_view pattern);

/// Returns the text that the pattern matches, if it is plain text: letters, digits and other characters without a
/// special meaning, punctuation after a backslash, and classes of one character as above.
/// Returns no value for every other pattern.
std::optional<std::string> literalText(std::string_view pattern);

} // namespace orchard
