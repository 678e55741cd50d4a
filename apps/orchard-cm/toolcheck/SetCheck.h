// SetCheck: what is missing or wrong in a tool's property set, told from its text alone.
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
    std::string text; ///< what is wrong, and what to do
    std::string place;
};

/// Missing commands and patterns, patterns that are none or lack their group or match everything, values that mean
/// nothing, and keys that nobody reads.
std::vector<Finding> checkSet(const std::vector<SetEntry> &entries);

/// What is wrong with a value for this key; empty if nothing is, or nothing is known of the key.
std::string faultOfValue(std::string_view key, const std::string &value);

/// The entry with this key, found without regard to case; null if there is none.
const SetEntry *entryOf(const std::vector<SetEntry> &entries, std::string_view key);

/// Whether every occurrence of `text` in a command stands in quotes of the shell. Within "$( )" quoting begins
/// anew.
bool standsInQuotes(std::string_view command, std::string_view text);

} // namespace orchard_cm
