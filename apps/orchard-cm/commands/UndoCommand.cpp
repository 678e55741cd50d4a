#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/host/IProject.h"
#include "apps/orchard-cm/commands/OperationOptions.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitHandle.h"
#include "apps/orchard-cm/operation/OutcomeWatch.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace orchard_cm {

namespace {

/// Remembers a unit and the path of its file before the undo.
struct Former {
    UnitHandle handle;
    std::string file;
};

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

/// Has the tool rename the file in the archive after the unit. Returns why it did not; empty if it did.
std::string renameInArchive(IUnit &unit, const std::string &from, CMDiagnosticList &diagnostics) {
    const OutcomeWatch watch;
    CMFacade::RenameMember(&unit, from, unit.getFullFileName(), diagnostics);
    return watch.reason();
}

/// A file that was renamed after its unit's archived name has another name than in the archive. The tool renames
/// it there; if it can't, the file gets its old name back, so that the next command finds it in the archive.
void followInArchive(const Context &context, const std::vector<Former> &formers, CMDiagnosticList &diagnostics) {
    for (const Former &former : formers) {
        IUnit *const unit = former.handle.unit();
        if (unit == nullptr || unit->getFullFileName().str() == former.file) {
            continue;
        }
        const std::string name = unit->getFileName().str();
        const std::string fault = renameInArchive(*unit, former.file, diagnostics);
        if (!fault.empty()) {
            unit->setFileName(std::filesystem::path(former.file).filename().string());
            context.output.message(Output::Kind::warning,
                                   former.file + ": the file keeps its name, as it could not be renamed to " +
                                       name + " in the archive: " + fault);
        }
        unit->updateCMHeader();
        unit->updateMode("");
    }
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
                : [&context](CMUnitList &units, CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
                      std::vector<Former> formers;
                      for (IUnit *const unit : units) {
                          formers.push_back({UnitHandle(*unit), unit->getFullFileName().str()});
                      }
                      putOwnersFirst(units);
                      const int result = CMFacade::Uncheckout(units, arguments, diagnostics);
                      followInArchive(context, formers, diagnostics);
                      return result;
                  },
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
