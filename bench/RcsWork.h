// Measures one facade operation on all units of a project under RCS, against a shell loop of the tool's own
// command over the same files. Every run uses a new copy.
#pragma once

#include "bench/RcsCopy.h"

#include "CM/CMSupport/core/CMOperation.h"

#include <functional>
#include <string>

namespace bench {

struct RcsWork {
    std::string what; ///< text after the number of units in the row: "units, RCS / loop of ci"
    std::string verb; ///< text before that number: "check in"
    std::function<int(CMUnitList &units, CMDiagnosticList &diagnostics)> operation; ///< 1 on success
    std::string peerCommand;                                                        ///< for each "$file"
    RcsCopy::Mode after; ///< mode of all files afterwards
};

/// Measures and prints the row. Returns whether it takes at most 1.15 times as long as the loop.
bool measure(const Setting &setting, const RcsCopy &rcs, const RcsWork &work);

} // namespace bench
