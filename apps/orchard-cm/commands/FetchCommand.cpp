#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IPN.h"
#include "apps/orchard-cm/commands/OperationOptions.h"
#include "apps/orchard-cm/model/Session.h"
#include "orchard/model/Paths.h"

#include <CLI/CLI.hpp>

#include <filesystem>

namespace orchard_cm {

namespace {

namespace fs = std::filesystem;

class FetchCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        options_.declareLabel(app, "Fetch the version with this label or number");
        app.add_option("--to", directory_,
                       "Put the files into this directory, and don't change those of the model")
            ->type_name("DIR");
        options_.declareUnitsOrFiles(app, "Name files of the archive");
        app.footer(
            "Gets files from the archive, read-only and without a lock. Units whose files have changed are\n"
            "read again; a file that the model doesn't know is not loaded.");
    }

    ExitCode run(Context &context) override {
        const std::string target = targetDirectory();
        const Operation fetch{.wording = {"fetched", target.empty(), target.empty()},
                              .expected = {.file = target.empty(), .unit = false},
                              .arguments =
                                  [&](TemplateArguments &arguments) {
                                      arguments.addMode(false);
                                      arguments.addLabel(options_.label());
                                      arguments.addTargetDirectory(target);
                                  },
                              .reload = target.empty() ? Reload::changed : Reload::byLibrary,
                              .changes = target.empty() ? Changes::units : Changes::nothing,
                              .alsoJudge = [&](const ItemResult &item) { return targetFault(target, item.file); }};
        return options_.run(context, fetch, entryFor(context, fetch, target),
                            options_.recursive() ? CMFacade::RecFetchFromArchive : CMFacade::FetchFromArchive);
    }

  private:
    [[nodiscard]] std::string targetDirectory() const {
        if (directory_.empty()) {
            return {};
        }
        std::error_code error;
        const fs::path target = fs::absolute(directory_).lexically_normal();
        if (const auto fault = orchard::faultOfPath(target.string()); !fault.empty()) {
            throw Failure(ExitCode::usage, "the directory '" + target.string() + "' can't be used: " + fault);
        }
        fs::create_directories(target, error);
        if (error) {
            throw Failure(ExitCode::failed,
                          "the directory '" + directory_ + "' can't be created: " + error.message());
        }
        return target.string();
    }
    /// Returns the entry that fetches units. If only the tool's command for archive files can put them in another
    /// place, that command is used: the other one would overwrite the files of the model.
    UnitEntry entryFor(Context &context, const Operation &fetch, const std::string &target) const {
        const auto units = options_.archive() ? std::vector<IUnit *>() : options_.units(context.session.project());
        if (target.empty() || units.empty() || commandNames(target, fetch, *units.front(), false)) {
            return CMFacade::Fetch;
        }
        if (!commandNames(target, fetch, *units.front(), true)) {
            throw Failure(ExitCode::failed, "the CM tool's command (properties " + IPN::CMFetch.str() + " and " +
                                                IPN::CMFetchFromArchive.str() +
                                                ") has no $targetDir, and would overwrite the files of the model");
        }
        return fetchAsFilesOfTheArchive;
    }
    static bool commandNames(const std::string &target, const Operation &fetch, const IUnit &unit, bool archive) {
        const CMArchiveItem item(unit.getFullFileName(), "", CMArchiveItem::unknown, "", "");
        TemplateArguments arguments;
        fetch.arguments(arguments);
        arguments.addArchive();
        archive ? arguments.addArchiveItem(item) : arguments.addUnit(unit);
        CString command;
        CString error;
        return CMProperty::ExpandProperty(archive ? IPN::CMFetchFromArchive : IPN::CMFetch, arguments.list(),
                                          command, error, false) != 0 &&
               command.Find(target) >= 0;
    }
    static int fetchAsFilesOfTheArchive(CMUnitList &units, CMArgumentList &arguments,
                                        CMDiagnosticList &diagnostics) {
        CMArchiveItemListWrapper items;
        for (const IUnit *const unit : units) {
            items.addTail(new CMArchiveItem(unit->getFullFileName(), "", CMArchiveItem::unknown, "", ""));
        }
        return CMFacade::FetchFromArchive(items.list(), arguments, diagnostics);
    }
    static std::string targetFault(const std::string &target, const std::string &file) {
        if (target.empty() || fs::exists(fs::path(target) / fs::path(file).filename())) {
            return {};
        }
        return "the tool put no file there; check that its command (properties Fetch and FetchFromArchive) has "
               "$targetDir";
    }

    OperationOptions options_;
    std::string directory_;
};

} // namespace

std::unique_ptr<Command> makeFetchCommand() { return std::make_unique<FetchCommand>(); }

} // namespace orchard_cm
