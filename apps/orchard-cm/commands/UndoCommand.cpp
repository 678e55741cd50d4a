#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/host/IProject.h"
#include "apps/orchard-cm/commands/OperationOptions.h"
#include "apps/orchard-cm/model/HostSetup.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitHandle.h"
#include "apps/orchard-cm/operation/Restructuring.h"
#include "orchard/change/HeldRenamings.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace orchard_cm {

namespace {

int depthOf(const IUnit &unit) {
    int depth = 0;
    for (const IDObject *owner = unit.getOwner(); owner != nullptr; owner = owner->getOwner()) {
        ++depth;
    }
    return depth;
}

/// Owners come before their parts: when the file of a part gets its old name back, its owner's file is changed to
/// list it, and must not be restored after that.
void putOwnersFirst(CMUnitList &units) {
    std::vector<IUnit *> order(units.begin(), units.end());
    std::ranges::stable_sort(order, {}, [](const IUnit *unit) { return depthOf(*unit); });
    units.RemoveAll();
    for (IUnit *const unit : order) {
        units.AddTail(unit);
    }
}

/// Renames a file after its unit, whose archived version has another name: on disk, in the archive and in the file
/// of the owner. If the tool can't rename it, the file keeps its name, so that the next command finds it in the
/// archive; that is an error, unless the owner's file may not be changed.
void renameAfterUnit(Context &context, IUnit &unit, const std::string &fileName) {
    const std::string file = unit.getFullFileName().str();
    orchard::UnitChange change = orchard::UnitChange::renameFile(unit, fileName);
    Restructuring rename{{"renamed", false}, "rename", "Rename", false, true, {}, {}};
    rename.command = "undo " + fileName;
    rename.entry = [&unit](orchard::UnitChange &begun, CMArgumentList &, CMDiagnosticList &diagnostics) {
        return CMFacade::RenameMember(&unit, begun.oldPath(), begun.newPath(), diagnostics);
    };
    const auto message = [&](Output::Kind kind, const std::string &text) {
        context.output.message(kind, file + ": " + text);
    };
    const std::string keepsName = "the file keeps its name, as it could not be renamed to " + fileName;
    if (!context.session.setup().mayGoOn()) {
        message(Output::Kind::warning, keepsName + " before the command ended");
        return;
    }
    Restructured result;
    try {
        result = carryOut(context, change, rename);
    } catch (const Failure &failure) {
        message(Output::Kind::warning, keepsName + " in the archive: " + failure.what());
        return;
    }
    for (const auto &problem : result.problems) {
        context.output.message(Output::Kind::warning, problem.message());
    }
    if (change.isOpen()) {
        message(Output::Kind::error, "the file has moved to " + fileName + ", but that could not be finished: " +
                                         result.fault + "; see 'orchard-cm recover'");
    } else if (!change.stands()) {
        message(Output::Kind::error, keepsName + " in the archive: " + result.fault);
    } else if (!result.fault.empty()) {
        message(Output::Kind::error,
                "the file has moved to " + fileName + ", but: " + result.fault + "; check the archive");
    }
}

/// Undoes the check out, and renames files after their units only then: each renaming is a change of its own, with
/// the tool in between.
int undoCheckOut(Context &context, CMUnitList &units, CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
    std::vector<std::pair<UnitHandle, std::string>> renamings;
    const orchard::HeldRenamings held([&renamings](IUnit &unit, const std::string &fileName) {
        renamings.emplace_back(UnitHandle(unit), fileName);
    });
    putOwnersFirst(units);
    const int result = CMFacade::Uncheckout(units, arguments, diagnostics);
    for (const auto &[handle, fileName] : renamings) {
        if (IUnit *const unit = handle.unit()) {
            renameAfterUnit(context, *unit, fileName);
        }
    }
    return result;
}

class UndoCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        options_.declareUnitsOrFiles(app, "Name files of the archive");
        app.footer(
            "The tool restores the archived file, local changes are lost, and the unit is read again. If this\n"
            "changes the unit's name, a file with the old name is renamed too, and likewise in the archive,\n"
            "provided that the owner's file is writable.");
    }

    ExitCode run(Context &context) override {
        const bool libraryReloads = !options_.recursive() && !options_.archive();
        const Operation undo{.wording = {"check out undone"},
                             .expected = {},
                             .reload = libraryReloads ? Reload::byLibrary : Reload::all};
        return options_.run(
            context, undo,
            options_.recursive()
                ? UnitEntry(CMFacade::RecUncheckout)
                : [&context](CMUnitList &units, CMArgumentList &arguments,
                             CMDiagnosticList
                                 &diagnostics) { return undoCheckOut(context, units, arguments, diagnostics); },
            [](CMArchiveItemList &items, CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
                return CMFacade::Uncheckout(items, arguments, diagnostics);
            });
    }

  private:
    OperationOptions options_;
};

} // namespace

std::unique_ptr<Command> makeUndoCommand() { return std::make_unique<UndoCommand>(); }

} // namespace orchard_cm
