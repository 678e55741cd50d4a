#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "apps/orchard-cm/commands/OperationOptions.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitHandle.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace orchard_cm {

namespace {

/// A unit with the place of its file before the undo.
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

/// Owners come before their parts: a part whose file gets its name back is listed so in its owner's file, which
/// must not be brought back over it.
void putOwnersFirst(CMUnitList &units) {
    std::vector<IUnit *> order(units.begin(), units.end());
    std::ranges::stable_sort(order, {}, [](const IUnit *unit) { return depthOf(*unit); });
    units.RemoveAll();
    for (IUnit *const unit : order) {
        units.AddTail(unit);
    }
}

/// Has the tool rename in the archive what follows the unit's name; empty, or why it did not.
std::string renameInArchive(const Context &context, IUnit &unit, const std::string &from,
                            CMDiagnosticList &diagnostics) {
    const Journal &journal = context.session.journal();
    const std::size_t before = journal.runs().size();
    const int result = CMFacade::RenameMember(&unit, from, unit.getFullFileName(), diagnostics);
    for (std::size_t at = before; at < journal.runs().size(); ++at) {
        if (std::string fault = failureOf(journal.runs()[at]); !fault.empty()) {
            return fault;
        }
    }
    return result == 0 || journal.runs().size() == before ? "the tool has no command for it (property Rename)"
                                                          : "";
}

/// A file that has followed its unit's archived name has another name than in the archive. The tool is told of it;
/// where it can't, the file goes back, so that the next command finds it in the archive.
void followInArchive(const Context &context, const std::vector<Former> &formers, CMDiagnosticList &diagnostics) {
    for (const Former &former : formers) {
        IUnit *const unit = former.handle.unit();
        if (unit == nullptr || unit->getFullFileName().str() == former.file) {
            continue;
        }
        const std::string name = unit->getFileName().str();
        const std::string fault = renameInArchive(context, *unit, former.file, diagnostics);
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
        options_.declareUnitsOrFiles(app, "Undo for files by their names in the archive");
        app.footer(
            "The tool throws the file away and brings the archived one back; the unit is read again. If its name\n"
            "is another then, and the file was named after it, the file follows, here and in the archive,\n"
            "where the file of the owner may be written.");
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
