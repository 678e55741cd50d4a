// RcsWork: one facade operation on all units of a project under RCS, against a shell loop of the tool's own
// command over the same files. Every run works on a fresh copy.
#pragma once

#include "bench/RcsCopy.h"

#include "CM/CMSupport/core/CMOperation.h"

#include <functional>
#include <string>

namespace bench {

struct RcsWork {
    std::string what; ///< of the row, behind the number of units: "units, RCS / loop of ci"
    std::string verb; ///< in front of it: "check in"
    std::function<int(CMUnitList &units, CMDiagnosticList &diagnostics)> operation; ///< 1 if all went well
    std::string peerCommand;                                                        ///< for each "$file"
    RcsCopy::Mode after; ///< mode of all files afterwards
};

/// Measures and prints the row; whether its bar holds, at most 1.15 times the loop.
bool measure(const Setting &setting, const RcsCopy &rcs, const RcsWork &work);

} // namespace bench
