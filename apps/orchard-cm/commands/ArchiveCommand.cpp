#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "apps/orchard-cm/base/Table.h"
#include "apps/orchard-cm/commands/OperationOptions.h"
#include "apps/orchard-cm/model/HostSetup.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/operation/OutcomeWatch.h"
#include "orchard/model/ModelView.h"

#include <CLI/CLI.hpp>

#include <optional>

namespace orchard_cm {

namespace {

const char *modeText(CMArchiveItem::Mode mode) {
    switch (mode) {
    case CMArchiveItem::readOnly:
        return "RO";
    case CMArchiveItem::readWrite:
        return "RW";
    case CMArchiveItem::unknown:
        break;
    }
    return "";
}

/// Returns the unit of the model to which the file belongs; empty if the model doesn't contain it.
std::string unitOf(const CMArchiveItem &item) {
    const IUnit *const unit = IUnit::getByFile(item.getFileNameForRepFiles());
    return unit == nullptr ? std::string() : orchard::pathInModel(*unit);
}

Json toJson(const CMArchiveItem &item) {
    Json json = {{"file", item.getFileNameWithPath().str()}};
    for (const auto &[key, value] :
         {std::pair("version", item.getVersion().str()), std::pair("mode", std::string(modeText(item.getMode()))),
          std::pair("locker", item.getLocker().str()), std::pair("unit", unitOf(item))}) {
        if (!value.empty()) {
            json[key] = value;
        }
    }
    return json;
}

class ArchiveCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_option("--label", label_, "List the versions with this label")->type_name("LABEL");
        app.add_flag("--paths", pathsOnly_, "List only the files, one on each line");
        app.footer(
            "Mode: RW if somebody works on the file, else RO; empty if the tool doesn't report it. The unit is\n"
            "that of the model; checkout --archive adds a file without a unit to the model.");
    }

    ExitCode run(Context &context) override {
        static_cast<void>(context.session.project());
        requireLabel(label_);
        requireCommand(IPN::CMListArchive);
        TemplateArguments arguments;
        arguments.addArchive();
        arguments.addMode(true);
        arguments.addLabel(label_);
        CMDiagnosticList diagnostics;
        CMArchiveItemListWrapper items;
        context.session.setup().expectRuns(1);
        const std::size_t errorsBefore = context.output.errorCount();
        std::optional<WindowHold> held; // the window would show only the raw listing
        if (!context.options.trace) {
            held.emplace(context.session);
        }
        const OutcomeWatch watch;
        // The return value is that of the last field of the last record, and means nothing.
        static_cast<void>(CMFacade::ListArchive(items.list(), arguments.list(), diagnostics));
        reportDiagnostics(context, diagnostics);
        write(context, items.list());
        const std::string fault = watch.reason();
        if (!fault.empty() || context.output.errorCount() > errorsBefore) {
            if (held) {
                held->release();
            }
            throw Failure(ExitCode::failed,
                          "the archive can't be listed" + (fault.empty() ? std::string() : ": " + fault));
        }
        return ExitCode::done;
    }

  private:
    void write(Context &context, CMArchiveItemList &items) const {
        Json files = Json::array();
        if (context.output.isJson()) {
            for (const CMArchiveItem *const item : items) {
                files.push_back(toJson(*item));
            }
        }
        context.output.result({{"files", std::move(files)}}, [&](std::ostream &out) {
            Table table{"VERSION", "MODE", "LOCKER", "UNIT", "FILE"};
            for (const CMArchiveItem *const item : items) {
                if (pathsOnly_) {
                    out << item->getFileNameWithPath() << '\n';
                } else {
                    table.add({item->getVersion().str(), modeText(item->getMode()), item->getLocker().str(),
                               unitOf(*item), item->getFileNameWithPath().str()});
                }
            }
            table.write(out);
        });
    }

    std::string label_;
    bool pathsOnly_ = false;
};

} // namespace

std::unique_ptr<Command> makeArchiveCommand() { return std::make_unique<ArchiveCommand>(); }

} // namespace orchard_cm
