#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitSelection.h"
#include "apps/orchard-cm/operation/Restructuring.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

class RenameCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_flag("--no-tool", noTool_, "Don't change the archive: for a unit that is not in it");
        app.add_option("UNIT", unit_, "A unit by its name, its path in the model or its file")->required();
        app.add_option("NAME", name_, "The new name")->required();
        app.footer(
            "If the file has the unit's name, it is renamed too. The files of the unit and of its owner must be\n"
            "writable. If the tool can't rename it, the model and the files stay unchanged. After a crash,\n"
            "the same command continues; see 'orchard-cm recover'.");
    }

    ExitCode run(Context &context) override {
        const ProjectHold held = context.session.holdAlone();
        IUnit *unit = nullptr;
        const Restructuring rename{
            {"renamed", false},
            "rename",
            "Rename",
            false,
            !noTool_,
            commandText("rename", !noTool_, {unit_, name_}),
            [&](orchard::UnitChange &change, CMArgumentList &, CMDiagnosticList &diagnostics) {
                return CMFacade::RenameMember(unit, change.oldPath(), change.newPath(), diagnostics);
            }};
        if (const auto status = tellFinished(context, rename, {unit_})) {
            return *status;
        }
        unit = &unitNamed(context.session.project(), unit_);
        const OperationReport report =
            restructure(context, orchard::UnitChange::rename(*unit, name_), {unit}, rename);
        return writeResult(context, report, rename.wording);
    }

  private:
    std::string unit_;
    std::string name_;
    bool noTool_ = false;
};

} // namespace

std::unique_ptr<Command> makeRenameCommand() { return std::make_unique<RenameCommand>(); }

} // namespace orchard_cm
