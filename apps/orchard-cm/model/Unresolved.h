// Why a command template could not be expanded.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

#include <string>
#include <vector>

namespace orchard_cm {

struct Unresolved {
    /// The variable that stopped an expansion, followed through the arguments and properties whose values hold it:
    /// {"$LabelPart", "$label"}. The last is the one that nothing resolves, or that stands in the chain already.
    /// Empty if the text holds no variable, as when the name stood in a condition, which is gone by then.
    std::vector<std::string> chain;
    bool refersToItself = false; // the last one
};

/// What stopped an expansion, told from the half-expanded text.
Unresolved findUnresolved(const std::string &halfExpanded, CMArgumentList &args);
/// "'$label' could not be resolved", or "'$Part' refers to itself"; for a chain that is not empty.
std::string whatFailed(const Unresolved &unresolved);

} // namespace orchard_cm
