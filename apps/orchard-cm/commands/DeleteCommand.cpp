#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/core/UnitFiles.h"
#include "CM/host/IPN.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/Tools.h"
#include "apps/orchard-cm/model/UnitSelection.h"
#include "apps/orchard-cm/operation/Restructuring.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <string>
#include <utility>

namespace orchard_cm {

namespace {

bool deletesDirectories() {
    CString command;
    CMProperty::getToolPropertyValue(keys::deleteDirectory, command, false);
    return !command.IsEmpty();
}

/// A tool that can delete a directory gets the directory, and not the files in it.
CMUnitList unitsToDelete(const orchard::UnitChange &change) {
    CMUnitList list;
    if (deletesDirectories()) {
        for (const auto &file : change.files()) {
            list.AddTail(file.unit);
        }
    } else {
        for (IUnit *const unit : change.units()) {
            list.AddTail(unit);
        }
    }
    return list;
}

/// A tool that can delete a directory deletes that of every subsystem that has one. If others use the directory
/// too, their files would be deleted with it.
void requireOwnDirectories(const orchard::UnitChange &change) {
    if (!change || !hasTool() || !deletesDirectories()) {
        return;
    }
    for (const auto &file : change.files()) {
        if (file.isDirectory || !hasOwnDirectory(file.unit)) {
            continue;
        }
        const std::string directory = std::filesystem::path(file.from).parent_path().string();
        const std::string holds = file.sharedWith == nullptr
                                      ? " can't be read"
                                      : " also contains files of '" + file.sharedWith->getName().str() + "'";
        throw Failure(
            ExitCode::failed,
            "can't delete it:\n'" + file.unit->getName().str() + "': its directory " + directory + holds +
                ", and the tool deletes complete directories",
            "Move one of the two to an owner in another directory first, or use --no-tool and delete the "
            "files with the tool yourself.");
    }
}

class DeleteCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_flag("--recursive", recursive_, "Also delete units with others below them");
        app.add_flag("--no-tool", noTool_, "Don't change the archive: for units that are not in it");
        app.add_option("UNIT", words_, "Units by name, path in the model or file")->required();
        app.footer(
            "The tool decides what the archive keeps of a deleted file. The files of the owners must be\n"
            "writable. If the tool can't delete a unit, the model and the files stay unchanged. After a crash,\n"
            "the same command continues; see 'orchard-cm recover'.");
    }

    ExitCode run(Context &context) override {
        const ProjectHold held = context.session.holdAlone();
        const Restructuring remove{
            {"deleted", false},
            "delete",
            IPN::Delete,
            true,
            !noTool_,
            commandText("delete", !noTool_, words_),
            [](orchard::UnitChange &change, CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
                CMUnitList list = unitsToDelete(change);
                return CMFacade::DeleteMember(list, arguments, diagnostics);
            }};
        if (const auto status = tellFinished(context, remove, words_)) {
            return *status;
        }
        const IProject &project = context.session.project();
        const auto units = unitsNamed(project, words_);
        if (const auto below = withUnitsBelow(project, units); !recursive_ && below.size() > units.size()) {
            throw Failure(ExitCode::usage,
                          std::to_string(below.size() - units.size()) + " more units below would be deleted too",
                          "Confirm it with --recursive.");
        }
        orchard::UnitChange change = orchard::UnitChange::remove(units);
        if (!noTool_) {
            requireOwnDirectories(change);
        }
        const OperationReport report = restructure(context, std::move(change), units, remove);
        return writeResult(context, report, remove.wording);
    }

  private:
    std::vector<std::string> words_;
    bool recursive_ = false;
    bool noTool_ = false;
};

} // namespace

std::unique_ptr<Command> makeDeleteCommand() { return std::make_unique<DeleteCommand>(); }

} // namespace orchard_cm
