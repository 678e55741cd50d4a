// Why a command template could not be expanded.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

#include <string>
#include <vector>

namespace orchard_cm {

/// The variable that stopped an expansion, told from the half-expanded text, followed through the arguments and
/// properties whose values hold it: {"$LabelPart", "$label"}. The last is the one that nothing resolves. Empty if
/// the text holds no variable, as when the name stood in a condition, which is gone by then.
std::vector<std::string> unresolvedChain(const std::string &halfExpanded, CMArgumentList &args);

} // namespace orchard_cm
