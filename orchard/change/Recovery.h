// Finishes a change of units that a crash or a failure has left unfinished, or takes it back.
//
// A move, a renaming or a removal writes its plan beside the project file before its first step, and removes it
// after the last (ChangeDecision.h lists the steps). While the plan is there, the model on disk may list a unit
// nowhere, or with a file that is elsewhere; so recover the project before it is opened to be changed.
#pragma once

#include "orchard/OrchardApi.h"
#include "orchard/storage/Problem.h"

#include <string>

namespace orchard {

/// What to do about an unfinished change.
enum class Recover {
    byWhatIsThere, ///< finish it if a file has moved or is gone already, else take it back
    finish,        ///< do what is left
    undo,          ///< take it back; refused if a CM tool has moved a file, or a file is removed, already
};

struct Recovered {
    enum class Outcome {
        nothing,   ///< there is no unfinished change
        finished,  ///< all is as the change wanted it
        takenBack, ///< all is as before the change
        failed,    ///< it is still unfinished; `problems` says why
    };
    Outcome outcome = Outcome::nothing;
    std::string command; ///< what the user asked for, as UnitChange::begin() was told; may be empty
    Problems problems;   ///< what the user should know, also of a change that is finished now
};

/// `path` names a project as for openProject(), which must not be open. Nothing is asked, and no tool is run.
[[nodiscard]] ORCHARD_API Recovered recover(const std::string &path, Recover how);

/// Describes an unfinished change.
struct UnfinishedChange {
    std::string file;         ///< of the plan; empty if there is no unfinished change
    std::string command;      ///< as in Recovered
    bool wouldFinish = false; ///< what Recover::byWhatIsThere would do
    bool byTool = false;      ///< whether a CM tool takes part
    Problems problems;        ///< if the plan can't be read, the reason
};

/// Returns what is unfinished, and changes nothing.
[[nodiscard]] ORCHARD_API UnfinishedChange unfinishedChange(const std::string &path);

} // namespace orchard
