#include "apps/orchard-cm/operation/Operation.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/questions/CMAskOnCheckoutGuard.h"
#include "CM/host/IProject.h"
#include "apps/orchard-cm/base/Interrupt.h"
#include "apps/orchard-cm/model/Brackets.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/Tools.h"
#include "apps/orchard-cm/model/Unresolved.h"
#include "apps/orchard-cm/operation/Item.h"
#include "apps/orchard-cm/operation/ReloadFiles.h"
#include "apps/orchard-cm/operation/TextCheck.h"

#include <algorithm>
#include <memory>

namespace orchard_cm {

namespace {

using Outcome = ItemResult::Outcome;

/// Why the template can't be expanded for the item, or gives no command; empty if it does.
std::string commandFault(const Item &item, const Operation &operation) {
    const IUnit *const unit = item.archiveItem ? nullptr : unitNow(item);
    const CString key = operation.key(unit);
    if (CMProperty::getToolProperty(key, nullptr, 0, false) == nullptr) {
        return "the CM tool has no command for it (property " + key.str() + ")";
    }
    TemplateArguments arguments;
    if (operation.arguments) {
        operation.arguments(arguments);
    }
    arguments.addArchive();
    if (item.archiveItem) {
        arguments.addArchiveItem(*item.archiveItem);
    } else if (unit != nullptr) {
        arguments.addUnit(*unit);
    }
    CString command;
    CString error;
    if (CMProperty::ExpandProperty(key, arguments.list(), command, error, false) != 0) {
        return command.IsEmpty() ? "the CM tool has no command for it (property " + key.str() + " is empty)"
                                 : std::string();
    }
    const auto unresolved = findUnresolved(command.str(), arguments.list());
    return "the command (property " + key.str() + ") can't be expanded" +
           (unresolved.chain.empty() ? std::string() : ": " + whatFailed(unresolved));
}

std::string whyNotRun(const Item &item, const Journal &journal, const RunsOfItems &runs) {
    if (isInterrupted()) {
        return "interrupted before its turn";
    }
    const IUnit *const unit = unitNow(item);
    if (!item.archiveItem && unit == nullptr) {
        return "the reload of an earlier unit took it out of the model";
    }
    if (!item.archiveItem && unit->isStub()) {
        return "the unit is not loaded, and was left out";
    }
    if (!item.archiveItem && unit->isReference()) {
        return "the unit is a reference, and was left out";
    }
    if (!item.archiveItem && item.result.before.object != unit) {
        return "the reload of an earlier unit replaced it before its turn; do it again for this one";
    }
    for (const JournalRun *const run : runs.shared) {
        if (std::string fault = failureOf(*run); !fault.empty()) {
            return "a command before it failed: " + fault;
        }
    }
    if (!journal.earlyErrors().empty()) {
        return journal.earlyErrors().front();
    }
    const std::string fault = pathFault(item.result.file);
    return fault.empty() ? "it was not worked on" : "the path of its file can't be given to a tool: " + fault;
}

/// No tool ran for the item: its command could not be made, or it was skipped, or never came to its turn.
void explainNoRun(Item &item, const Operation &operation, const Journal &journal, const RunsOfItems &runs) {
    if (auto fault = isInterrupted() ? std::string() : commandFault(item, operation); !fault.empty()) {
        item.result.outcome = Outcome::failed;
        item.result.reason = std::move(fault);
    } else if (item.result.outcome != Outcome::skipped) {
        item.result.reason = whyNotRun(item, journal, runs);
    }
}

std::string alsoFailed(const Item &item, const Operation &operation) {
    if (item.reloadFailed) {
        return "the unit could not be reloaded, and holds what it held";
    }
    if (item.archiveItem && operation.expected.unit && !item.result.after.inModel &&
        !item.archiveItem->getType().IsEmpty()) {
        return "the file could not be loaded into the model";
    }
    return operation.alsoJudge ? operation.alsoJudge(item.result) : std::string();
}

/// Whether a No to all stands for a file that no tool ran for: it was passed over without a question of its own.
bool coveredByEarlierAnswer(const Item &item, const Journal &journal) {
    return item.result.before.file.writable && !journal.questions().empty();
}

/// Whether those runs that belong to no item went well.
bool judgeAll(std::vector<Item> &items, const Operation &operation, const Journal &journal) {
    std::vector<std::string> files;
    std::ranges::transform(items, std::back_inserter(files), [](const Item &item) { return item.result.file; });
    RunsOfItems runs = runsOfItems(files, journal);
    for (std::size_t i = 0; i < items.size(); ++i) {
        Item &item = items[i];
        ItemRun &run = runs.items[i];
        lookAgain(item);
        run.asked = run.asked || coveredByEarlierAnswer(item, journal);
        judge(item.result, run, operation.expected);
        for (const JournalRun *const own : run.runs) {
            item.result.output += own->output;
        }
        if (run.runs.empty()) {
            explainNoRun(item, operation, journal, runs);
        } else if (item.result.outcome == Outcome::done) {
            if (auto fault = alsoFailed(item, operation); !fault.empty()) {
                item.result.outcome = Outcome::failed;
                item.result.reason = std::move(fault);
            }
        }
    }
    return std::ranges::all_of(runs.shared, [](const JournalRun *run) { return failureOf(*run).empty(); });
}

void reload(std::vector<Item> &items, Reload which) {
    std::vector<std::string> files;
    for (const Item &item : items) {
        const FilePicture now = pictureOf(item.result.file);
        const bool changed = item.result.before.inModel && !now.sameContent(item.result.before.file);
        if (now.exists && (which == Reload::all || changed)) {
            files.push_back(item.result.file);
        }
    }
    if (files.empty()) {
        return;
    }
    const auto failed = reloadFiles(files);
    for (Item &item : items) {
        item.reloadFailed = failed.contains(item.result.file);
    }
}

OperationReport run(Context &context, std::vector<Item> items, const Operation &operation,
                    const std::function<int(CMArgumentList &, CMDiagnosticList &)> &entry) {
    TemplateArguments arguments;
    if (operation.arguments) {
        operation.arguments(arguments);
    }
    CMDiagnosticList diagnostics;
    Journal &journal = context.session.startJournal(items.size(), operation.showsOutput);
    const std::size_t errorsBefore = context.output.errorCount();
    int result = 0;
    std::optional<WindowHold> held;
    if (operation.showsOutput && !context.options.trace) {
        held.emplace(context.session);
    }
    {
        const CMAskOnCheckoutGuard answersHoldTillHere;
        const UndoBracket undo;
        result = entry(arguments.list(), diagnostics);
        if (operation.reload != Reload::byLibrary && !isInterrupted()) {
            reload(items, operation.reload);
        }
    }
    tellDiagnostics(context, diagnostics);
    const bool sharedRunsGood = judgeAll(items, operation, journal);
    OperationReport report;
    std::ranges::transform(items, std::back_inserter(report.items),
                           [](Item &item) { return std::move(item.result); });
    report.good =
        result != 0 && sharedRunsGood && context.output.errorCount() == errorsBefore &&
        std::ranges::all_of(report.items, [](const ItemResult &item) { return item.outcome == Outcome::done; });
    if (held && !report.good) {
        held->release();
    }
    return report;
}

} // namespace

OperationReport operateOnUnits(Context &context, const std::vector<IUnit *> &units, const Operation &operation,
                               const UnitEntry &entry) {
    std::vector<Item> items;
    CMUnitList list;
    for (IUnit *const unit : units) {
        items.push_back(itemOf(unit, unit->getFullFileName().str()));
        list.AddTail(unit);
    }
    return run(context, std::move(items), operation,
               [&](CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
                   return entry(list, arguments, diagnostics);
               });
}

OperationReport operateOnArchive(Context &context, const std::vector<std::string> &names,
                                 const Operation &operation, const ArchiveEntry &entry) {
    std::vector<Item> items;
    CMArchiveItemList list;
    for (const auto &name : names) {
        auto archiveItem = std::make_unique<CMArchiveItem>(name, "", CMArchiveItem::unknown, "", "");
        IUnit *const unit = IUnit::getByFile(archiveItem->getFileNameForRepFiles());
        items.push_back(itemOf(unit, archiveItem->getFullUnitFileName().str()));
        CMArchiveItem *listed = archiveItem.get();
        list.AddTail(listed);
        items.back().archiveItem = std::move(archiveItem);
    }
    return run(context, std::move(items), operation,
               [&](CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
                   return entry(list, arguments, diagnostics);
               });
}

ExitCode tell(Context &context, const OperationReport &report, const Wording &wording) {
    Json items = Json::array();
    for (const auto &item : report.items) {
        items.push_back(toJson(item, wording));
    }
    context.output.result({{"items", std::move(items)}}, [&](std::ostream &out) {
        for (const auto &item : report.items) {
            write(out, item, wording);
        }
    });
    return report.good ? ExitCode::done : ExitCode::failed;
}

void tellDiagnostics(Context &context, const CMDiagnosticList &diagnostics) {
    context.output.status().clear();
    for (const CMDiagnostic &diagnostic : diagnostics) {
        context.output.message(diagnostic.getResult() == 0 ? Output::Kind::error : Output::Kind::information,
                               diagnostic.getDiagnostic().str());
    }
}

void requireCommand(const CString &key) {
    if (CMProperty::getUseSCCtool() != 0 || toolInUse().empty()) {
        return;
    }
    const IProperty *const property = CMProperty::getToolProperty(key, nullptr, 0, false);
    if (property == nullptr || property->getValue().IsEmpty()) {
        throw Failure(ExitCode::failed,
                      "the CM tool " + toolInUse() + " has no command for this (property " + key.str() +
                          (property == nullptr ? " is missing)" : " is empty)"),
                      "See the page of docs/tools about this tool, or 'orchard-cm tool check " + toolInUse() +
                          "'.");
    }
}

} // namespace orchard_cm
