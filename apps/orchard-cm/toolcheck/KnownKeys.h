// The keys of a tool's property set that the library reads, and what each may hold.
#pragma once

#include <span>
#include <string_view>

namespace orchard_cm {

enum class KeyKind {
    command,          ///< a template that every set should have; empty says that the tool can't do it
    optionalCommand,  ///< a template without which the operation does something else, or is not there
    rawCommand,       ///< a text of which only some names are replaced
    pattern,          ///< of which only counts whether it matches
    patternWithGroup, ///< of which the first group is taken
    truth,
    number,
    choice,
    text,
};

struct KnownKey {
    std::string_view name;
    KeyKind kind;
    std::string_view choices = {}; ///< of a choice: its values, parted by ";"
};

std::span<const KnownKey> knownKeys();
/// Found without regard to case; null if there is none.
const KnownKey *knownKey(std::string_view name);

} // namespace orchard_cm
