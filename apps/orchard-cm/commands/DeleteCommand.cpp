#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IPN.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitSelection.h"
#include "apps/orchard-cm/operation/Restructuring.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

/// A tool that can delete a directory is told of it, and not of what lies in it.
CMUnitList unitsToTell(const orchard::UnitChange &change) {
    CMUnitList list;
    CString directoryCommand;
    CMProperty::getToolPropertyValue("DeleteDirectory", directoryCommand, false);
    if (directoryCommand.IsEmpty()) {
        for (IUnit *const unit : change.units()) {
            list.AddTail(unit);
        }
    } else {
        for (const auto &file : change.files()) {
            list.AddTail(file.unit);
        }
    }
    return list;
}

class DeleteCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_flag("--recursive", recursive_, "Also units that have others below them");
        app.add_flag("--no-tool", noTool_, "Leave the archive alone: for units that are not in it");
        app.add_option("UNIT", words_, "Units by name, path in the model or file")->required();
        app.footer(
            "What the archive keeps of a deleted file is the tool's affair. The files of the owners have to\n"
            "be writable. Where the tool can't delete a unit, model and files stay as they are.");
    }

    ExitCode run(Context &context) override {
        const IProject &project = context.session.project();
        const auto units = unitsNamed(project, words_);
        if (const auto below = withUnitsBelow(project, units); !recursive_ && below.size() > units.size()) {
            throw Failure(ExitCode::usage,
                          std::to_string(below.size() - units.size()) + " more units lie below and would go too",
                          "Say so with --recursive.");
        }
        const Restructuring remove{
            {"deleted", false},
            "delete",
            IPN::Delete,
            !noTool_,
            [](orchard::UnitChange &change, CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
                CMUnitList list = unitsToTell(change);
                return CMFacade::DeleteMember(list, arguments, diagnostics);
            }};
        const OperationReport report = restructure(context, orchard::UnitChange::remove(units), units, remove);
        return tell(context, report, remove.wording);
    }

  private:
    std::vector<std::string> words_;
    bool recursive_ = false;
    bool noTool_ = false;
};

} // namespace

std::unique_ptr<Command> makeDeleteCommand() { return std::make_unique<DeleteCommand>(); }

} // namespace orchard_cm
