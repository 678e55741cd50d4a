#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitSelection.h"
#include "apps/orchard-cm/operation/Restructuring.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>

namespace orchard_cm {

namespace {

std::string directoryOf(const std::string &file) { return std::filesystem::path(file).parent_path().string(); }

/// Whether units below move file by file with the one that was asked for.
bool movesContent(const orchard::UnitChange &change, const IUnit &unit) {
    return std::ranges::any_of(change.files(),
                               [&](const orchard::FileChange &file) { return file.unit != &unit; });
}

int moveInArchive(IUnit &unit, const orchard::UnitChange &change, CMArgumentList &arguments,
                  CMDiagnosticList &diagnostics) {
    CMUnitList list;
    if (movesContent(change, unit)) {
        for (const auto &file : change.files()) {
            list.AddTail(file.unit);
        }
        constexpr bool noHybrid = false;
        return CMFacade::movePackageContent(&unit, list, directoryOf(change.oldPath()),
                                            directoryOf(change.newPath()), arguments, diagnostics, noHybrid);
    }
    for (const auto &owner : change.owners()) {
        list.AddTail(owner.unit);
        list.AddTail(owner.oldOwner);
        list.AddTail(owner.newOwner);
    }
    return CMFacade::MoveMember(list, arguments, diagnostics);
}

class MoveCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_flag("--no-tool", noTool_, "Leave the archive alone: for a unit that is not in it yet");
        app.add_option("UNIT", unit_, "A unit by its name, its path in the model or its file")->required();
        app.add_option("OWNER", owner_, "The unit that is to own it; the project's name for the top")->required();
        app.footer(
            "The files of both owners have to be writable, as they list the unit. Where the tool can't move\n"
            "it, model and files stay as they are.");
    }

    ExitCode run(Context &context) override {
        const IProject &project = context.session.project();
        IUnit &unit = unitNamed(project, unit_);
        IUnit &owner = unitNamed(project, owner_);
        const Restructuring move{
            {"moved", false},
            "move",
            "Move",
            !noTool_,
            [&](orchard::UnitChange &change, CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
                return moveInArchive(unit, change, arguments, diagnostics);
            }};
        const OperationReport report =
            restructure(context, orchard::UnitChange::move({&unit}, owner), {&unit}, move);
        return tell(context, report, move.wording);
    }

  private:
    std::string unit_;
    std::string owner_;
    bool noTool_ = false;
};

} // namespace

std::unique_ptr<Command> makeMoveCommand() { return std::make_unique<MoveCommand>(); }

} // namespace orchard_cm
