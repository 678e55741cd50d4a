#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "apps/orchard-cm/base/Table.h"
#include "apps/orchard-cm/commands/OperationOptions.h"
#include "apps/orchard-cm/model/Session.h"
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

/// The unit of the model that the file belongs to; empty for one that the model doesn't know.
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

std::string faultOf(const Journal &journal) {
    if (!journal.runs().empty()) {
        return failureOf(journal.runs().back());
    }
    return journal.earlyErrors().empty() ? "its command (property " + IPN::CMListArchive.str() +
                                               ") can't be expanded; see it with 'orchard-cm expand'"
                                         : journal.earlyErrors().front();
}

class ArchiveCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_option("--label", label_, "List the versions with this label")->type_name("LABEL");
        app.add_flag("--paths", pathsOnly_, "Only the files, one a line");
        app.footer("Mode: RW where somebody works on the file, RO else; neither where the tool doesn't tell. The\n"
                   "unit is that of the model; a file without one can be brought in with checkout --archive.");
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
        const Journal &journal = context.session.startJournal(1);
        const std::size_t errorsBefore = context.output.errorCount();
        std::optional<WindowHold> held; // what it shows is the raw listing
        if (!context.options.trace) {
            held.emplace(context.session);
        }
        // The return value is that of the last record's last field, and says nothing.
        static_cast<void>(CMFacade::ListArchive(items.list(), arguments.list(), diagnostics));
        tellDiagnostics(context, diagnostics);
        write(context, items.list());
        const std::string fault = faultOf(journal);
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
