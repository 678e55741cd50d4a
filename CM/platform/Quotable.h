// Decides which names can be quoted in a command template. Names come from untrusted places (an archive listing, a
// model file, the disk); in double quotes in a template, a name must remain a single word of the command.
#pragma once

#include <optional>
#include <string_view>

namespace platform {

/// The first thing in a name that a template can't quote.
struct Unquotable {
    enum class Kind {
        character,        ///< ends or changes quoted text, or, for ">", redirects the output even inside quotes
        controlCharacter, ///< below a blank, or 0x7F
        conditional,      ///< "(", "?" and ")": see canMakeConditional()
        backslashAtEnd,   ///< would escape the closing quote
    };
    Kind kind;
    char character; ///< of the first two kinds
};

/// Searches a path or a part of one. A backslash that isn't at the end counts as a separator.
[[nodiscard]] std::optional<Unquotable> findUnquotable(std::string_view path);

/// Returns whether a template could take the names for a conditional. `names` is the text of all names that reach
/// one command. Names are filled in before conditionals are looked for, each any number of times, so that the
/// order of the characters doesn't matter.
[[nodiscard]] bool canMakeConditional(std::string_view names);

[[nodiscard]] constexpr bool isControlCharacter(char character) {
    const auto code = static_cast<unsigned char>(character);
    return code < 0x20 || code == 0x7F;
}

} // namespace platform
