#include "apps/orchard-cm/operation/Restructuring.h"

#include "apps/orchard-cm/model/Brackets.h"
#include "apps/orchard-cm/model/HostSetup.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/Tools.h"
#include "apps/orchard-cm/operation/Item.h"
#include "apps/orchard-cm/operation/OutcomeWatch.h"
#include "orchard/storage/Problem.h"

#include <algorithm>

namespace orchard_cm {

namespace {

std::string textOf(const orchard::Problems &problems) {
    std::string text;
    for (const auto &problem : problems) {
        text += (text.empty() ? "" : "\n") + problem.message();
    }
    return text;
}

void judge(ItemResult &item, const std::string &fault, bool cutOff, const orchard::UnitChange &change) {
    if (change.stands() && change.isComplete() && fault.empty()) {
        item.outcome = ItemResult::Outcome::done;
        return;
    }
    item.outcome = ItemResult::Outcome::failed;
    if (!change.isComplete()) {
        item.reason = (fault.empty() ? "a file is not where it belongs" : fault) +
                      (change.stands() ? "; the model has changed nevertheless, check the archive"
                                       : "; the model is unchanged, check the archive");
        return;
    }
    item.reason = (fault.empty() ? "the tool did nothing" : fault) +
                  (change.stands() ? "; the model and its files have changed nevertheless, check the archive"
                   : cutOff        ? "; the model and its files are unchanged, check the archive"
                                   : "; the model and its files are unchanged");
}

} // namespace

OperationReport restructure(Context &context, orchard::UnitChange change, const std::vector<IUnit *> &units,
                            const Restructuring &how) {
    if (!change) {
        throw Failure(ExitCode::failed,
                      std::string("can't ") + how.infinitive + " it:\n" + textOf(change.problems()));
    }
    const bool byTool = how.withTool && !toolInUse().empty() && !change.files().empty();
    if (byTool) {
        requireCommand(how.key);
    }
    std::vector<Item> items;
    std::ranges::transform(units, std::back_inserter(items),
                           [](IUnit *unit) { return itemOf(unit, unit->getFullFileName().str()); });
    context.session.setup().expectRuns(change.files().size());
    const std::size_t errorsBefore = context.output.errorCount();
    CMDiagnosticList diagnostics;
    std::string fault;
    const OutcomeWatch watch;
    {
        const UndoBracket undo;
        change.begin();
        if (byTool) {
            TemplateArguments arguments;
            const int result = how.entry(change, arguments.list(), diagnostics);
            reportDiagnostics(context, diagnostics);
            fault = isFault(watch.fault()) ? watch.reason() : result == 0 ? "the tool did nothing" : "";
        }
        for (const auto &problem : change.finish(byTool ? orchard::FilesBy::tool : orchard::FilesBy::host)) {
            context.output.message(change.stands() && change.isComplete() ? Output::Kind::warning
                                                                          : Output::Kind::error,
                                   problem.message());
        }
    }
    OperationReport report;
    for (Item &item : items) {
        recordStateAfter(item);
        judge(item.result, fault, watch.wasCutOff(), change);
        report.items.push_back(std::move(item.result));
    }
    report.good =
        fault.empty() && change.stands() && change.isComplete() && context.output.errorCount() == errorsBefore;
    return report;
}

} // namespace orchard_cm
