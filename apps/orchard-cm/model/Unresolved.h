// Explains why a command template could not be expanded.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

#include <string>
#include <vector>

namespace orchard_cm {

struct Unresolved {
    /// The variable that stopped an expansion, followed through the arguments and properties whose values contain
    /// it: {"$LabelPart", "$label"}. The last one is not resolved by anything, or is already in the chain. Empty
    /// if the text contains no variable, for example because the name was in a condition, which the expansion has
    /// already removed.
    std::vector<std::string> chain;
    bool refersToItself = false; // the last one
    bool exceedsLimit = false;   // the last one can be expanded alone, but not within the template
};

/// Finds what stopped an expansion from the partly expanded text.
Unresolved findUnresolved(const std::string &halfExpanded, CMArgumentList &args);
/// Returns "'$label' could not be resolved", or "'$Part' refers to itself". The chain must not be empty.
std::string whatFailed(const Unresolved &unresolved);

} // namespace orchard_cm
