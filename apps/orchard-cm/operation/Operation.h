// Operation: an entry of the library's facade, run as a dialog of the host would run it, and told item by item.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "CM/CMSupport/core/CMOperation.h"
#include "apps/orchard-cm/commands/Command.h"
#include "apps/orchard-cm/model/TemplateArguments.h"
#include "apps/orchard-cm/operation/ItemResult.h"

#include <functional>
#include <string>
#include <vector>

class IUnit;

namespace orchard_cm {

/// Whose units are read again behind the operation, where the library leaves that to its caller.
enum class Reload {
    byLibrary, ///< none: the library has done it, or nothing changes
    changed,   ///< those whose files the tool has changed
    all,       ///< all, also those that the model doesn't know yet
};

/// What is special to an operation.
struct Operation {
    Wording wording;
    Expectation expected;
    /// The property that holds the template for this unit, or for a file of the archive (null). Says why no
    /// command was run.
    std::function<CString(const IUnit *)> key;
    /// The arguments that the caller gives, and that the library does not add by itself.
    std::function<void(TemplateArguments &)> arguments = {};
    Reload reload = Reload::byLibrary;
    bool showsOutput =
        false; ///< what the tool writes is the result; the CM output window shows it on failure only
    /// More to judge of an item whose states are filled in: why it failed after all, or the empty text.
    std::function<std::string(const ItemResult &)> alsoJudge = {};
};

/// What came of it.
struct OperationReport {
    std::vector<ItemResult> items; ///< in the order in which they were asked for
    bool good = false;             ///< every item is done, no error was shown, and the library reports success
};

using UnitEntry = std::function<int(CMUnitList &, CMArgumentList &, CMDiagnosticList &)>;
using ArchiveEntry = std::function<int(CMArchiveItemList &, CMArgumentList &, CMDiagnosticList &)>;

/// On units, by their files in the workspace.
OperationReport operateOnUnits(Context &context, const std::vector<IUnit *> &units, const Operation &operation,
                               const UnitEntry &entry);
/// On files of the archive, by their names there.
OperationReport operateOnArchive(Context &context, const std::vector<std::string> &names,
                                 const Operation &operation, const ArchiveEntry &entry);

/// Writes the items as the command's result, and gives what the program ends with.
ExitCode tell(Context &context, const OperationReport &report, const Wording &wording);

/// Tells the library's diagnostics to the user.
void tellDiagnostics(Context &context, const CMDiagnosticList &diagnostics);

/// Throws a Failure where the tool in use has no command for the property, or an empty one. Quiet without a tool:
/// the library says so itself.
void requireCommand(const CString &key);

} // namespace orchard_cm
