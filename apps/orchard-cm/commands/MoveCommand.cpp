#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitSelection.h"
#include "apps/orchard-cm/operation/Restructuring.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace orchard_cm {

namespace {

std::string directoryOf(const std::string &file) { return std::filesystem::path(file).parent_path().string(); }

/// Returns whether one call can move the unit by its owners: only its file moves, or its own directory as one
/// piece.
bool goesInOnePiece(const orchard::UnitChange &change, const IUnit &unit) {
    return std::ranges::all_of(change.files(), [&](const orchard::FileChange &file) {
        return file.unit == &unit && (file.isDirectory || unit.getPersistAs().IsEmpty());
    });
}

/// The units of one call to the tool, which move from one directory into another. Only the file of the package
/// moves; of other units that have their own directory, the directory moves.
struct Batch {
    std::string from;
    std::string to;
    IUnit *package = nullptr;
    CMUnitList units;
};

bool isPackage(const orchard::FileChange &file) {
    return !file.isDirectory && !file.unit->getPersistAs().IsEmpty();
}

/// Returns the directory that the change leads from or to: the one that contains the file, or the unit's own
/// directory.
std::string baseOf(const orchard::FileChange &file, const std::string &path) {
    if (!file.isDirectory) {
        return directoryOf(path);
    }
    const std::string suffix = "/" + file.unit->getPersistAs().str();
    return path.ends_with(suffix) ? path.substr(0, path.size() - suffix.size()) : directoryOf(path);
}

/// A directory that others use too must not be moved: its files move one by one, and the unit that has the
/// directory is the package of a call.
std::vector<Batch> batchesOf(const orchard::UnitChange &change, IUnit &unit) {
    std::vector<Batch> batches;
    for (const auto &file : change.files()) {
        const std::string from = baseOf(file, file.from);
        const std::string to = baseOf(file, file.to);
        const bool fits = !batches.empty() && batches.back().from == from && batches.back().to == to &&
                          !isPackage(file) && file.unit != batches.back().package;
        if (!fits) {
            Batch &fresh = batches.emplace_back();
            fresh.from = from;
            fresh.to = to;
        }
        Batch &batch = batches.back();
        if (isPackage(file)) {
            batch.package = file.unit;
        }
        batch.units.AddTail(file.unit);
    }
    for (Batch &batch : batches) {
        batch.package = batch.package == nullptr ? &unit : batch.package;
    }
    return batches;
}

int moveInArchive(IUnit &unit, const orchard::UnitChange &change, CMArgumentList &arguments,
                  CMDiagnosticList &diagnostics) {
    if (goesInOnePiece(change, unit)) {
        CMUnitList list;
        for (const auto &owner : change.owners()) {
            list.AddTail(owner.unit);
            list.AddTail(owner.oldOwner);
            list.AddTail(owner.newOwner);
        }
        return CMFacade::MoveMember(list, arguments, diagnostics);
    }
    int result = 1;
    for (Batch &batch : batchesOf(change, unit)) {
        constexpr bool noHybrid = false;
        if (CMFacade::movePackageContent(batch.package, batch.units, batch.from, batch.to, arguments, diagnostics,
                                         noHybrid) == 0) {
            result = 0;
        }
    }
    return result;
}

class MoveCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_flag("--no-tool", noTool_, "Don't change the archive: for a unit that is not in it");
        app.add_option("UNIT", unit_, "A unit by its name, its path in the model or its file")->required();
        app.add_option("OWNER", owner_, "The new owner; the project's name means the top level")->required();
        app.footer(
            "The files of both owners must be writable, because they list the unit. If the tool can't move it,\n"
            "the model and the files stay unchanged. After a crash,\n"
            "the same command continues; see 'orchard-cm recover'.");
    }

    ExitCode run(Context &context) override {
        const ProjectHold held = context.session.holdAlone();
        IUnit *unit = nullptr;
        const Restructuring move{
            {"moved", false},
            "move",
            "Move",
            false,
            !noTool_,
            commandText("move", !noTool_, {unit_, owner_}),
            [&](orchard::UnitChange &change, CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
                return moveInArchive(*unit, change, arguments, diagnostics);
            }};
        if (const auto status = tellFinished(context, move, {unit_})) {
            return *status;
        }
        const IProject &project = context.session.project();
        unit = &unitNamed(project, unit_);
        IUnit &owner = unitNamed(project, owner_);
        const OperationReport report =
            restructure(context, orchard::UnitChange::move({unit}, owner), {unit}, move);
        return writeResult(context, report, move.wording);
    }

  private:
    std::string unit_;
    std::string owner_;
    bool noTool_ = false;
};

} // namespace

std::unique_ptr<Command> makeMoveCommand() { return std::make_unique<MoveCommand>(); }

} // namespace orchard_cm
