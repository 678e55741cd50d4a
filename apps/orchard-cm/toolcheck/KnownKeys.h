// Lists the keys of a tool's property set that the library or this program reads, and what each may contain.
#pragma once

#include <span>
#include <string_view>

namespace orchard_cm {

enum class KeyKind {
    command,         ///< a template that every set should have; it may be empty if the tool can't do the operation
    optionalCommand, ///< a template without which the operation does something else, or is not available
    rawCommand,      ///< a text in which only some names are replaced
    pattern,         ///< a pattern of which only the match counts
    patternWithGroup, ///< a pattern of which the first group is used
    truth,
    number,
    choice,
    text,
};

struct KnownKey {
    std::string_view name;
    KeyKind kind;
    std::string_view choices = {}; ///< for a choice: its values, separated by ";"
};

std::span<const KnownKey> knownKeys();
/// Returns the key with this name, found regardless of case; null if there is none.
const KnownKey *knownKey(std::string_view name);

} // namespace orchard_cm
