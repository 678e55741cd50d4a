#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "apps/orchard-cm/commands/OperationOptions.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitSelection.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace orchard_cm {

namespace {

void write(std::ostream &out, const OperationReport &report, const Wording &wording) {
    for (const ItemResult &item : report.items) {
        if (item.outcome != ItemResult::Outcome::done) {
            write(out, item, wording);
            continue;
        }
        if (report.items.size() > 1) {
            out << item.name << ":\n";
        }
        out << item.output << (item.output.ends_with('\n') || item.output.empty() ? "" : "\n");
    }
}

class HistoryCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_option("UNIT", words_, "Units by name, path in the model or file")->required();
        app.footer("Shows the history of each unit as the tool prints it.");
    }

    ExitCode run(Context &context) override {
        const auto units = unitsNamed(context.session.project(), words_);
        const Operation history{.wording = {"shown", false},
                                .expected = {.file = false},
                                .changes = Changes::nothing,
                                .showsOutput = true};
        const OperationReport report =
            operateOnUnits(context, units, history,
                           [](CMUnitList &list, CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
                               return CMFacade::History(list, arguments, diagnostics);
                           });
        Json items = Json::array();
        for (const ItemResult &item : report.items) {
            items.push_back({{"unit", item.name},
                             {"file", item.file},
                             {"outcome", toJson(item, history.wording)["outcome"]},
                             {"history", item.output}});
            if (!item.reason.empty()) {
                items.back()["reason"] = item.reason;
            }
        }
        context.output.result({{"items", std::move(items)}},
                              [&](std::ostream &out) { write(out, report, history.wording); });
        return report.good ? ExitCode::done : ExitCode::failed;
    }

  private:
    std::vector<std::string> words_;
};

} // namespace

std::unique_ptr<Command> makeHistoryCommand() { return std::make_unique<HistoryCommand>(); }

} // namespace orchard_cm
