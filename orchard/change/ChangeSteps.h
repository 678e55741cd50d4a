// Takes the steps of a plan on disk, in the order that ChangeDecision.h gives. Never overwrites a file other than
// the unit files that the plan names, and these only if they hold what the plan knows.
#pragma once

#include "orchard/change/ChangeDecision.h"
#include "orchard/change/ChangePlan.h"
#include "orchard/storage/Problem.h"

#include <string>
#include <vector>

namespace orchard {

/// The file that holds the plan of a project's change: "Pump.orp.change" for "Pump.orp".
[[nodiscard]] std::string planFileOf(const std::string &projectFile);

/// Step 1. Fails if another change of the project is unfinished. Returns why it can't be done, else an empty text.
[[nodiscard]] std::string beginOnDisk(const ChangePlan &plan, const std::string &projectFile);

enum class Ending {
    afterTool, ///< a tool has run: depends on the files found
    byHost,    ///< no tool takes part: the host moves or removes the files
    asFound,   ///< after a crash: depends on the files found
    byForce,   ///< after a crash: finished if that is possible
    takenBack, ///< taken back; fails if a tool has moved a file, or a file is removed, already
};

struct Ended {
    Decision decision;         ///< what was done, or is to be done yet
    bool isOver = false;       ///< no step is left; else the plan stays
    bool isIncomplete = false; ///< a file is at none of its places, or a unit's own file is read-only now
};

/// Steps 3 to 6, or the way back. Adds what the user should know. If a step fails, goes back if nothing was done
/// before the call; otherwise leaves the plan, and the next call continues.
[[nodiscard]] Ended endOnDisk(const ChangePlan &plan, const std::string &projectFile, Ending ending,
                              Problems &told);

/// What Ending::asFound would do.
[[nodiscard]] Decision lookAt(const ChangePlan &plan);

/// After a tool has worked: the files that got only one of the two, their new name or their new directory, each
/// with the place in the same directory where endOnDisk() brings it.
[[nodiscard]] std::vector<ChangePlan::Path> halfWayIn(const ChangePlan &plan);

/// Whether something of this name exists, even if only a dangling link.
[[nodiscard]] bool isThere(const std::string &path);
/// Returns 0, or the number of the system's error. An existing target is an error.
[[nodiscard]] int moveWithoutReplacing(const std::string &from, const std::string &to);

} // namespace orchard
