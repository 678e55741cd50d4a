// Renames, moves or removes units, and brings model, files and archive to the same state.
#pragma once

#include "apps/orchard-cm/operation/Operation.h"
#include "orchard/change/UnitChange.h"

#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace orchard_cm {

struct Restructuring {
    Wording wording;
    const char *infinitive; ///< "rename"
    CString key;            ///< of the template that the tool needs for the operation
    bool removes = false;   ///< units leave the model
    bool withTool = true;   ///< false: the archive is not changed
    std::string command;    ///< what the user asked for, to recognise it after a crash
    /// Runs the facade's entry between the two halves of the change.
    std::function<int(orchard::UnitChange &, CMArgumentList &, CMDiagnosticList &)> entry;
};

/// What became of a change.
struct Restructured {
    std::string fault; ///< why it is not done, or not completely; empty if it is
    /// What the library reports as not done: the first reason for each unit, which its owners share. The reason
    /// for the whole call is that of null.
    std::unordered_map<const IDObject *, std::string> reported;
    bool wasCutOff = false;     ///< a run of the tool did not end by itself
    orchard::Problems problems; ///< what the user should know
};

/// Returns whether the active project uses a tool or a provider. Throws a Failure if that can't be looked up,
/// because the project has neither an active component nor a configuration.
bool hasTool();

/// Carries out a change with the tool in between. Throws a Failure if it can't
/// begin; nothing has changed then.
Restructured carryOut(Context &context, orchard::UnitChange &change, const Restructuring &how);

/// Returns the command as a user would type it, with the option that decides whether the archive changes too.
std::string commandText(const char *name, bool withTool, const std::vector<std::string> &words);

/// If an earlier run of the same command was interrupted and finished just now, reports that and returns the exit
/// status. A unit that was to be removed and is still there counts as failed.
std::optional<ExitCode> tellFinished(Context &context, const Restructuring &how,
                                     const std::vector<std::string> &words);

/// Carries out the change for `units`, the ones that the user named. Throws a Failure if it can't be done;
/// nothing has changed then. If something fails later, each item reports why, and the state of model and file.
OperationReport restructure(Context &context, orchard::UnitChange change, const std::vector<IUnit *> &units,
                            const Restructuring &how);

} // namespace orchard_cm
