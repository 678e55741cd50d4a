// Finds what is missing or wrong in a tool's property set, from its text alone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orchard_cm {

/// A property of the set.
struct SetEntry {
    std::string key;
    std::string value;
    std::string place; ///< "FILE:LINE:COLUMN"
};

struct Finding {
    std::string key;
    std::string text; ///< what is wrong, and what to do about it
    std::string place;
};

/// Returns missing commands and patterns, patterns that are invalid, lack their group or match everything,
/// meaningless values, and unused keys.
std::vector<Finding> checkSet(const std::vector<SetEntry> &entries);

/// Returns what is wrong with a value for this key; empty if nothing is, or if the key is unknown.
std::string faultOfValue(std::string_view key, const std::string &value);

/// Returns the entry with this key, found regardless of case; null if there is none.
const SetEntry *entryOf(const std::vector<SetEntry> &entries, std::string_view key);

/// Returns whether every occurrence of `text` in a command is inside shell quotes. Quoting starts again inside a
/// command substitution.
bool isInQuotes(std::string_view command, std::string_view text);

} // namespace orchard_cm
