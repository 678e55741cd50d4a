// The dialect of the patterns in property values, as pure text work: what is handed to the regular expression
// engine for a pattern, and which patterns need no engine at all.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orchard {

struct TranslatedPattern {
    std::string text; ///< what the engine compiles
    /// The positions in `text`, ascending, of the backslashes that the translation has put in.
    std::vector<std::size_t> inserted;

    /// The position in the pattern as it was written for a position in `text`. Both are counted in bytes from 0.
    [[nodiscard]] std::size_t originalPosition(std::size_t position) const;
};

/// Translates a pattern for the engine. The engine's own dialect stays as it is, with one rule added: a bracket
/// expression that would stay open because its closing bracket stands behind a backslash takes its backslashes
/// as ordinary characters. So "[\]\$temp" is a class that holds a backslash, then a dollar and "temp".
/// Takes time and memory in proportion to the length of the pattern.
TranslatedPattern translatePattern(std::string_view pattern);

/// The text that the pattern stands for, if it is plain text: letters, digits and other characters without a
/// meaning of their own, characters of punctuation behind a backslash, and classes of one character as above.
/// No value for every other pattern.
std::optional<std::string> literalText(std::string_view pattern);

} // namespace orchard
