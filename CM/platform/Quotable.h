// Which names a command template can quote. A name may come from an archive's listing, from a model file or from a
// file that somebody put on the disk; between "" in a template it must stay one word of the command.
#pragma once

#include <optional>
#include <string_view>

namespace platform {

/// The first thing in a name that a template can't quote.
struct Unquotable {
    enum class Kind {
        character,        ///< ends or changes a quoted text, or (">") redirects the output wherever it is
        controlCharacter, ///< below a blank, or 0x7F
        conditional,      ///< "(", "?" and ")": see canMakeConditional()
        backslashAtEnd,   ///< would take the closing quote for itself
    };
    Kind kind;
    char character; ///< of the first two kinds
};

/// Looks through a path, or a part of one. A backslash before the end is a separator.
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
