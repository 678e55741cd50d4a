#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/host/IPN.h"
#include "apps/orchard-cm/commands/OperationOptions.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

class UndoCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        options_.declareUnitsOrFiles(app, "Undo for files by their names in the archive");
        app.footer("The tool throws the file away and brings the archived one back; the unit is read again.");
    }

    ExitCode run(Context &context) override {
        const bool libraryReloads = !options_.recursive() && !options_.archive();
        const Operation undo{.wording = {"check out undone"},
                             .expected = {},
                             .key = [](const IUnit *) { return IPN::CMUnLockItem; },
                             .reload = libraryReloads ? Reload::byLibrary : Reload::all};
        return options_.run(
            context, undo,
            options_.recursive()
                ? UnitEntry(CMFacade::RecUncheckout)
                : [](CMUnitList &units, CMArgumentList &arguments,
                     CMDiagnosticList
                         &diagnostics) { return CMFacade::Uncheckout(units, arguments, diagnostics); },
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
