// Runs an operation of CMFacade the way a dialog of a host would, and reports the result of each item.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "CM/CMSupport/core/CMOperation.h"
#include "apps/orchard-cm/model/TemplateArguments.h"
#include "apps/orchard-cm/operation/ItemResult.h"
#include "apps/orchard-cm/options/Command.h"

#include <functional>
#include <string>
#include <vector>

class IUnit;

namespace orchard_cm {

/// Which units the program reloads after the operation.
enum class Reload {
    byLibrary, ///< none: the library has already done it, or nothing changes
    changed,   ///< the units whose files the tool has changed
    all,       ///< every item that the tool worked on, even if the model doesn't contain it yet
};

/// What an operation may change; other programs can't change it at the same time.
enum class Changes {
    project, ///< anything
    units,   ///< the files of its units, while others work on other units
    nothing, ///< nothing in the project
};

/// Describes an operation.
struct Operation {
    Wording wording;
    Expectation expected = {};
    /// Adds the arguments that the caller provides and the library does not add by itself.
    std::function<void(TemplateArguments &)> arguments = {};
    Reload reload = Reload::byLibrary;
    Changes changes = Changes::project;
    bool showsOutput = false; ///< the tool's output is the result; the CM window shows it only on failure
    /// Returns why an item that the library reports as done still counts as failed; empty if it doesn't.
    std::function<std::string(const ItemResult &)> alsoJudge = {};
};

/// The result of an operation.
struct OperationReport {
    std::vector<ItemResult> items; ///< in the order in which they were requested
    bool good = false;             ///< every item is done, no error was shown, and the library reports success
};

using UnitEntry = std::function<int(CMUnitList &, CMArgumentList &, CMDiagnosticList &)>;
using ArchiveEntry = std::function<int(CMArchiveItemList &, CMArgumentList &, CMDiagnosticList &)>;

/// Runs the operation on units, by their files in the workspace.
OperationReport operateOnUnits(Context &context, const std::vector<IUnit *> &units, const Operation &operation,
                               const UnitEntry &entry);
/// Runs the operation on files of the archive, by their names there.
OperationReport operateOnArchive(Context &context, const std::vector<std::string> &names,
                                 const Operation &operation, const ArchiveEntry &entry);

/// Writes the items as the command's result, and returns the program's exit status.
ExitCode writeResult(Context &context, const OperationReport &report, const Wording &wording);

/// Reports the library's diagnostics to the user.
void reportDiagnostics(Context &context, const CMDiagnosticList &diagnostics);

/// Throws a Failure if the tool in use has no command for the property, or an empty one. Does nothing if there is
/// no tool, because the library reports that itself.
void requireCommand(const CString &key);

} // namespace orchard_cm
