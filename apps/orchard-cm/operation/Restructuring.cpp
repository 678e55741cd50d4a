#include "apps/orchard-cm/operation/Restructuring.h"

#include "apps/orchard-cm/model/Brackets.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/Tools.h"
#include "apps/orchard-cm/model/UnitHandle.h"
#include "apps/orchard-cm/operation/Item.h"
#include "apps/orchard-cm/operation/TextCheck.h"
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

/// Why the library has run no command for one of the files; empty if their names are not the reason.
std::string faultOfPaths(const orchard::UnitChange &change) {
    for (const auto &file : change.files()) {
        for (const std::string &path : {file.from, file.to}) {
            if (const std::string fault = pathFault(path); !fault.empty()) {
                return "the path " + path + " can't be given to a tool: " + fault;
            }
        }
    }
    return {};
}

/// Why the tool did not do all that it was told; empty if it did.
std::string toolFault(const Journal &journal, int result, const Restructuring &how,
                      const orchard::UnitChange &change) {
    for (const JournalRun &run : journal.runs()) {
        if (std::string fault = failureOf(run); !fault.empty()) {
            return fault;
        }
    }
    if (!journal.earlyErrors().empty()) {
        return journal.earlyErrors().front();
    }
    if (journal.runs().empty() || result == 0) {
        const std::string fault = faultOfPaths(change);
        return !fault.empty() ? fault
                              : "the tool's command (property " + how.key.str() +
                                    ") could not be made; see it with 'orchard-cm expand'";
    }
    return {};
}

/// Whether a command of the tool was begun and did not come to its own end: what it has done is not known.
bool wasCutOff(const Journal &journal) {
    using End = platform::ChildResult::End;
    return std::ranges::any_of(journal.runs(), [](const JournalRun &run) {
        return run.end.end == End::killedBySignal || run.end.end == End::timedOut ||
               run.end.end == End::interrupted;
    });
}

void judge(ItemResult &item, const std::string &fault, bool cutOff, const orchard::UnitChange &change) {
    if (change.stands() && change.isComplete() && fault.empty()) {
        item.outcome = ItemResult::Outcome::done;
        return;
    }
    item.outcome = ItemResult::Outcome::failed;
    if (!change.isComplete()) {
        item.reason = (fault.empty() ? "a file is not where it belongs" : fault) +
                      (change.stands() ? "; the model has changed all the same, look at the archive"
                                       : "; the model is as it was, look at the archive");
        return;
    }
    item.reason = (fault.empty() ? "the tool did nothing" : fault) +
                  (change.stands() ? "; the model and its files have changed all the same, look at the archive"
                   : cutOff        ? "; model and files are as they were, look at the archive"
                                   : "; model and files are as they were");
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
    Journal &journal = context.session.startJournal(change.files().size());
    const std::size_t errorsBefore = context.output.errorCount();
    CMDiagnosticList diagnostics;
    std::string fault;
    {
        const UndoBracket undo;
        change.begin();
        if (byTool) {
            TemplateArguments arguments;
            const int result = how.entry(change, arguments.list(), diagnostics);
            tellDiagnostics(context, diagnostics);
            fault = toolFault(journal, result, how, change);
        }
        for (const auto &problem : change.finish(byTool ? orchard::FilesBy::tool : orchard::FilesBy::host)) {
            context.output.message(change.stands() && change.isComplete() ? Output::Kind::warning
                                                                          : Output::Kind::error,
                                   problem.message());
        }
    }
    OperationReport report;
    for (Item &item : items) {
        lookAgain(item);
        judge(item.result, fault, byTool && wasCutOff(journal), change);
        report.items.push_back(std::move(item.result));
    }
    report.good =
        fault.empty() && change.stands() && change.isComplete() && context.output.errorCount() == errorsBefore;
    return report;
}

} // namespace orchard_cm
