#include "apps/orchard-cm/operation/Operation.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/questions/CMAskOnCheckoutGuard.h"
#include "CM/host/IProject.h"
#include "apps/orchard-cm/base/Interrupt.h"
#include "apps/orchard-cm/model/Brackets.h"
#include "apps/orchard-cm/model/HostSetup.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/Tools.h"
#include "apps/orchard-cm/operation/Item.h"
#include "apps/orchard-cm/operation/OutcomeWatch.h"
#include "apps/orchard-cm/operation/ReloadFiles.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>

namespace orchard_cm {

namespace {

using Outcome = ItemResult::Outcome;

/// Holds the items of an operation, in the order in which they were requested.
class Items {
  public:
    /// `entry` is the unit or archive item that the library gets.
    void add(Item item, const void *entry) {
        byEntry_[entry] = byFile_[item.result.file] = items_.size();
        items_.push_back(std::move(item));
    }
    /// Returns the item that the library means; null if the outcome concerns no item. An item that was passed to
    /// the library under another entry is found by its file.
    Item *find(const CMOutcome &outcome) {
        const void *const entry = outcome.unit != nullptr ? static_cast<const void *>(outcome.unit) : outcome.item;
        if (const auto found = byEntry_.find(entry); found != byEntry_.end()) {
            return &items_[found->second];
        }
        const auto found = entry == nullptr ? byFile_.end() : byFile_.find(outcome.file.str());
        return found == byFile_.end() ? nullptr : &items_[found->second];
    }

    [[nodiscard]] std::size_t size() const { return items_.size(); }
    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }

  private:
    std::vector<Item> items_;
    std::unordered_map<const void *, std::size_t> byEntry_;
    std::unordered_map<std::string, std::size_t> byFile_;
};

void fail(ItemResult &result, std::string reason) {
    result.outcome = Outcome::failed;
    result.reason = std::move(reason);
}

void reload(Items &items, Reload which) {
    std::vector<std::string> files;
    for (const Item &item : items) {
        const bool changed = item.result.before.inModel && item.result.fileChanged;
        if (item.hasRun && item.result.after.exists && (which == Reload::all || changed)) {
            files.push_back(item.result.file);
        }
    }
    if (files.empty()) {
        return;
    }
    const ReloadedFiles reloaded = reloadFiles(files);
    for (Item &item : items) {
        item.result.reloaded = item.result.reloaded || reloaded.read.contains(item.result.file);
        if (item.result.outcome == Outcome::done && reloaded.failed.contains(item.result.file)) {
            fail(item.result, "the unit could not be reloaded, and is unchanged in the model");
        }
    }
}

/// Decides the outcome of an item from what was reported about it. `shared` is the fault of the call or of a
/// command for a directory, if there was one.
void judge(Item &item, const Operation &operation, const std::optional<std::string> &shared, bool mayGoOn) {
    ItemResult &result = item.result;
    recordStateAfter(item);
    if (!item.isReported && !mayGoOn) {
        result.outcome = Outcome::notBegun;
    } else if (!item.isReported) {
        fail(result, shared.value_or("nothing was done for it"));
    } else if (result.outcome == Outcome::done) {
        std::string fault = unmet(operation.expected, result);
        if (fault.empty() && operation.alsoJudge) {
            fault = operation.alsoJudge(result);
        }
        if (!fault.empty()) {
            fail(result, std::move(fault));
        }
    }
}

OperationReport run(Context &context, Items items, const Operation &operation,
                    const std::function<int(CMArgumentList &, CMDiagnosticList &)> &entry) {
    TemplateArguments arguments;
    if (operation.arguments) {
        operation.arguments(arguments);
    }
    CMDiagnosticList diagnostics;
    HostSetup &setup = context.session.setup();
    setup.expectRuns(items.size());
    const std::size_t errorsBefore = context.output.errorCount();
    std::optional<std::string> shared;
    const auto take = [&](const CMOutcome &outcome) {
        if (Item *const item = items.find(outcome)) {
            orchard_cm::take(*item, outcome, operation.showsOutput);
        } else if (isFault(outcome) && !shared) {
            shared = (outcome.file.IsEmpty() ? CString() : outcome.file + ": ").str() + outcome.reason.str();
        }
    };
    int result = 0;
    std::optional<WindowHold> held;
    if (operation.showsOutput && !context.options.trace) {
        held.emplace(context.session);
    }
    {
        const OutcomeWatch watch(take, [&setup](const CMOutcome &) { return setup.mayGoOn(); });
        const CMAskOnCheckoutGuard answersHoldTillHere;
        const UndoBracket undo;
        result = entry(arguments.list(), diagnostics);
        if (operation.reload != Reload::byLibrary && !isInterrupted()) {
            reload(items, operation.reload);
        }
    }
    reportDiagnostics(context, diagnostics);
    if (shared && !shared->empty() && std::ranges::all_of(items, &Item::isReported)) {
        context.output.message(Output::Kind::error, *shared); // it is no item's reason
    }
    OperationReport report;
    for (Item &item : items) {
        judge(item, operation, shared, setup.mayGoOn());
        report.items.push_back(std::move(item.result));
    }
    report.good = result != 0 && !shared && context.output.errorCount() == errorsBefore &&
                  std::ranges::all_of(report.items, [](const ItemResult &item) {
                      return item.outcome == Outcome::done || item.outcome == Outcome::passedOver;
                  });
    if (held && !report.good) {
        held->release();
    }
    return report;
}

} // namespace

OperationReport operateOnUnits(Context &context, const std::vector<IUnit *> &units, const Operation &operation,
                               const UnitEntry &entry) {
    Items items;
    CMUnitList list;
    for (IUnit *const unit : units) {
        items.add(itemOf(unit, unit->getFullFileName().str()), unit);
        list.AddTail(unit);
    }
    return run(context, std::move(items), operation,
               [&](CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
                   return entry(list, arguments, diagnostics);
               });
}

OperationReport operateOnArchive(Context &context, const std::vector<std::string> &names,
                                 const Operation &operation, const ArchiveEntry &entry) {
    Items items;
    CMArchiveItemListWrapper list;
    for (const auto &name : names) {
        auto archiveItem = std::make_unique<CMArchiveItem>(name, "", CMArchiveItem::unknown, "", "");
        IUnit *const unit = IUnit::getByFile(archiveItem->getFileNameForRepFiles());
        items.add(itemOf(unit, archiveItem->getFullUnitFileName().str()), archiveItem.get());
        list.addTail(archiveItem.release());
    }
    return run(context, std::move(items), operation,
               [&](CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
                   return entry(list.list(), arguments, diagnostics);
               });
}

ExitCode writeResult(Context &context, const OperationReport &report, const Wording &wording) {
    Json items = Json::array();
    for (const auto &item : report.items) {
        items.push_back(toJson(item, wording));
    }
    context.output.result({{"items", std::move(items)}},
                          [&](std::ostream &out) { write(out, report.items, wording); });
    return report.good ? ExitCode::done : ExitCode::failed;
}

void reportDiagnostics(Context &context, const CMDiagnosticList &diagnostics) {
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
