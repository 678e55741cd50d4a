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

/// Returns how model and files are after a change that has not gone well.
const char *stateAfter(const orchard::UnitChange &change, bool wasCutOff) {
    if (change.isOpen()) {
        return "; the change is not finished: repeat the command, or see 'orchard-cm recover'";
    }
    if (change.stands()) {
        return change.isComplete() ? "; the model and its files have changed nevertheless, check the archive"
                                   : "; the model has changed nevertheless, check the archive";
    }
    if (!change.isComplete()) {
        return "; the model is unchanged, check the archive";
    }
    return wasCutOff ? "; the model and its files are unchanged, check the archive"
                     : "; the model and its files are unchanged";
}

void judge(ItemResult &item, const Restructured &restructured, const orchard::UnitChange &change) {
    const bool done = restructured.fault.empty();
    item.outcome = done ? ItemResult::Outcome::done : ItemResult::Outcome::failed;
    item.reason = done ? "" : restructured.fault + stateAfter(change, restructured.wasCutOff);
}

} // namespace

std::string commandText(const std::vector<std::string> &words) {
    std::string text;
    for (const std::string &word : words) {
        const bool plain = !word.empty() && word.find_first_of(" \t\n\r'\"\\") == std::string::npos;
        text += text.empty() ? "" : " ";
        text += plain ? word : "'" + word + "'";
    }
    std::ranges::replace(text, '\n', ' ');
    return text;
}

bool tellFinished(Context &context, const Restructuring &how, const std::vector<std::string> &words) {
    if (!context.session.hasFinished(how.command)) {
        return false;
    }
    OperationReport report;
    for (const std::string &word : words) {
        ItemResult &item = report.items.emplace_back();
        item.name = word;
        item.outcome = ItemResult::Outcome::done;
        item.reason = "begun by an earlier run of the command";
    }
    report.good = true;
    static_cast<void>(writeResult(context, report, how.wording));
    return true;
}

Restructured carryOut(Context &context, orchard::UnitChange &change, const Restructuring &how) {
    const auto failed = [&how](const orchard::Problems &problems) {
        return Failure(ExitCode::failed, std::string("can't ") + how.infinitive + " it:\n" + textOf(problems));
    };
    if (!change) {
        throw failed(change.problems());
    }
    const bool byTool = how.withTool && !toolInUse().empty() && !change.files().empty();
    if (byTool) {
        requireCommand(how.key);
    }
    context.session.setup().expectRuns(change.files().size());
    const auto by = byTool ? orchard::FilesBy::tool : orchard::FilesBy::host;
    Restructured result;
    const OutcomeWatch watch;
    const UndoBracket undo;
    if (const auto problems = change.begin(by, how.command); !problems.empty()) {
        throw failed(problems);
    }
    if (byTool) {
        CMDiagnosticList diagnostics;
        TemplateArguments arguments;
        const int done = how.entry(change, arguments.list(), diagnostics);
        for (const auto &file : change.halfWay()) {
            CMFacade::RenameMember(file.unit, file.from, file.to, diagnostics);
        }
        reportDiagnostics(context, diagnostics);
        result.fault = isFault(watch.fault()) ? watch.reason() : done == 0 ? "the tool did nothing" : "";
        result.wasCutOff = watch.wasCutOff();
    }
    result.problems = change.finish(by);
    if ((!change.stands() || !change.isComplete()) && result.fault.empty()) {
        result.fault = change.isComplete() && byTool ? "the tool did nothing"
                       : change.isOpen()             ? "a step could not be taken"
                       : change.stands() || byTool   ? "a file is not where it belongs"
                                                     : "it could not be done";
    }
    return result;
}

OperationReport restructure(Context &context, orchard::UnitChange change, const std::vector<IUnit *> &units,
                            const Restructuring &how) {
    std::vector<Item> items;
    std::ranges::transform(units, std::back_inserter(items),
                           [](IUnit *unit) { return itemOf(unit, unit->getFullFileName().str()); });
    const std::size_t errorsBefore = context.output.errorCount();
    const Restructured restructured = carryOut(context, change, how);
    const bool good = change.stands() && change.isComplete();
    for (const auto &problem : restructured.problems) {
        context.output.message(good ? Output::Kind::warning : Output::Kind::error, problem.message());
    }
    OperationReport report;
    for (Item &item : items) {
        recordStateAfter(item);
        judge(item.result, restructured, change);
        report.items.push_back(std::move(item.result));
    }
    report.good = restructured.fault.empty() && context.output.errorCount() == errorsBefore;
    return report;
}

} // namespace orchard_cm
