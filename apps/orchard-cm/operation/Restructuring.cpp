#include "apps/orchard-cm/operation/Restructuring.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "apps/orchard-cm/base/Failure.h"
#include "apps/orchard-cm/model/Brackets.h"
#include "apps/orchard-cm/model/HostSetup.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/Tools.h"
#include "apps/orchard-cm/operation/Item.h"
#include "apps/orchard-cm/operation/OutcomeWatch.h"
#include "orchard/storage/Problem.h"
#include "orchard/storage/UnitSearch.h"

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

/// Returns how model and files are after a change of a unit that has not gone well. `isMade` says whether the
/// change of this unit was made, and `isMixed` whether that of some of several units was.
const char *stateAfter(const orchard::UnitChange &change, bool isMade, bool isMixed, bool wasCutOff) {
    if (change.isOpen()) {
        return "; the change is not finished: repeat the command, or see 'orchard-cm recover'";
    }
    if (isMade) {
        return change.isComplete() ? "; the model and its files have changed nevertheless, check the archive"
                                   : "; the model has changed nevertheless, check the archive";
    }
    if (!change.isComplete()) {
        return "; the model is unchanged, check the archive";
    }
    if (isMixed) {
        return wasCutOff ? "; the unit and its files are unchanged, check the archive"
                         : "; the unit and its files are unchanged";
    }
    return wasCutOff ? "; the model and its files are unchanged, check the archive"
                     : "; the model and its files are unchanged";
}

void note(const CMOutcome &outcome, std::unordered_map<const IDObject *, std::string> &reported) {
    if (!isFault(outcome)) {
        return;
    }
    const IDObject *object = outcome.unitNow;
    do {
        reported.try_emplace(object, outcome.reason.str());
        object = object == nullptr ? nullptr : object->getOwner();
    } while (object != nullptr);
}

/// Returns what the library reports about a unit; empty if that is no fault.
std::string reportedAbout(const IDObject *object, const Restructured &restructured) {
    for (const IDObject *const about : {object, static_cast<const IDObject *>(nullptr)}) {
        if (const auto found = restructured.reported.find(about); found != restructured.reported.end()) {
            return found->second;
        }
    }
    return {};
}

/// Returns whether the words name a unit, or several.
bool isNamed(const IProject &project, const std::string &words) {
    const auto search = orchard::findUnit(project, words);
    return search || !search.candidates.empty();
}

bool isGone(const ItemResult &item) { return item.before.inModel && !item.after.inModel; }

/// Decides the outcomes of several units, of which a tool may have removed only some.
void judge(std::vector<Item> &items, const std::vector<const IDObject *> &objects,
           const Restructured &restructured, const orchard::UnitChange &change) {
    const bool isMixed = !change.isOpen() && !change.stands() &&
                         std::ranges::any_of(items, [](const Item &item) { return isGone(item.result); });
    const std::string otherwise = restructured.reported.empty() ? restructured.fault
                                  : change.isOpen()             ? "a step could not be taken"
                                                                : "the tool did nothing";
    for (std::size_t at = 0; at < items.size(); ++at) {
        ItemResult &item = items[at].result;
        const bool isMade = change.stands() || (isMixed && isGone(item));
        std::string fault = items.size() == 1 ? restructured.fault : reportedAbout(objects[at], restructured);
        if (fault.empty() && (!isMade || change.isOpen() || !change.isComplete())) {
            fault = otherwise;
        }
        item.outcome = fault.empty() ? ItemResult::Outcome::done : ItemResult::Outcome::failed;
        item.reason = fault.empty() ? "" : fault + stateAfter(change, isMade, isMixed, restructured.wasCutOff);
    }
}

} // namespace

std::string commandText(const char *name, bool withTool, const std::vector<std::string> &words) {
    std::string text = name;
    text += withTool ? "" : " --no-tool";
    for (const std::string &word : words) {
        const bool plain = !word.empty() && word.find_first_of(" \t\n\r'\"\\") == std::string::npos;
        text += plain ? " " + word : " '" + word + "'";
    }
    std::ranges::replace(text, '\n', ' ');
    return text;
}

std::optional<ExitCode> tellFinished(Context &context, const Restructuring &how,
                                     const std::vector<std::string> &words) {
    if (!context.session.hasFinished(how.command)) {
        return std::nullopt;
    }
    OperationReport report{{}, true};
    for (const std::string &word : words) {
        ItemResult &item = report.items.emplace_back();
        item.name = word;
        item.outcome = ItemResult::Outcome::done;
        item.reason = "begun by an earlier run of the command";
        if (how.removes && isNamed(context.session.project(), word)) {
            item.outcome = ItemResult::Outcome::failed;
            item.reason = "an earlier run of the command was finished without it, or it names another unit now";
            report.good = false;
        }
    }
    return writeResult(context, report, how.wording);
}

bool hasTool() {
    if (CMProperty::getReferee(nullptr) == nullptr) {
        throw Failure(ExitCode::failed,
                      "the project has neither an active component nor a configuration, so its CM tool is unknown",
                      "With --no-tool, the archive is not changed.");
    }
    return CMProperty::getUseSCCtool() != 0 || !toolInUse().empty();
}

Restructured carryOut(Context &context, orchard::UnitChange &change, const Restructuring &how) {
    const auto failed = [&how](const orchard::Problems &problems) {
        return Failure(ExitCode::failed, std::string("can't ") + how.infinitive + " it:\n" + textOf(problems));
    };
    if (!change) {
        throw failed(change.problems());
    }
    const bool byTool = how.withTool && !change.files().empty() && hasTool();
    if (byTool) {
        requireCommand(how.key);
    }
    const auto by = byTool ? orchard::FilesBy::tool : orchard::FilesBy::host;
    Restructured result;
    const OutcomeWatch watch([&result](const CMOutcome &outcome) { note(outcome, result.reported); });
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
    const std::vector<const IDObject *> objects(units.begin(), units.end()); // deleted ones are only compared
    const std::size_t errorsBefore = context.output.errorCount();
    context.session.setup().expectRuns(change.files().size());
    const Restructured restructured = carryOut(context, change, how);
    const bool good = change.stands() && change.isComplete();
    for (const auto &problem : restructured.problems) {
        context.output.message(good ? Output::Kind::warning : Output::Kind::error, problem.message());
    }
    OperationReport report;
    std::ranges::for_each(items, recordStateAfter);
    judge(items, objects, restructured, change);
    for (Item &item : items) {
        report.items.push_back(std::move(item.result));
    }
    report.good = restructured.fault.empty() && context.output.errorCount() == errorsBefore;
    return report;
}

} // namespace orchard_cm
