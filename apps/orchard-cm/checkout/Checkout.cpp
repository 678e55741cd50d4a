#include "apps/orchard-cm/checkout/Checkout.h"

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/questions/CMAskOnCheckoutGuard.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "apps/orchard-cm/base/Interrupt.h"
#include "apps/orchard-cm/checkout/Reload.h"
#include "apps/orchard-cm/model/Brackets.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/TemplateArguments.h"
#include "apps/orchard-cm/model/UnitFacts.h"
#include "apps/orchard-cm/model/UnitHandle.h"
#include "apps/orchard-cm/model/Unresolved.h"

#include <algorithm>
#include <functional>
#include <memory>

namespace orchard_cm {

namespace {

using Outcome = CheckoutResult::Outcome;

/// One file of the batch.
struct Item {
    CheckoutResult result;
    std::unique_ptr<UnitHandle> handle;         ///< null where the model has no unit for it yet
    std::unique_ptr<CMArchiveItem> archiveItem; ///< null for a unit of the workspace
    bool reloadFailed = false;                  ///< with the recursive forms only
};

ItemState stateOf(const std::string &file, const IUnit *unit) {
    ItemState state;
    state.file = pictureOf(file);
    if (unit != nullptr) {
        const UnitFacts facts = factsOf(*unit);
        state.inModel = true;
        state.version = facts.version;
        state.state = facts.state;
        state.locker = facts.locker;
        state.isEmbedded = dynamic_cast<const IEmbededFile *>(unit) != nullptr;
        state.object = unit;
    }
    return state;
}

Item itemOf(IUnit *unit, const std::string &file) {
    Item item;
    item.result.file = file;
    item.result.name = unit != nullptr ? factsOf(*unit).path : file;
    item.result.before = stateOf(file, unit);
    if (unit != nullptr) {
        item.handle = std::make_unique<UnitHandle>(*unit);
    }
    return item;
}

IUnit *unitNow(const Item &item) {
    IUnit *const unit = item.handle ? item.handle->unit() : nullptr;
    return unit != nullptr ? unit : IUnit::getByFile(item.result.file);
}

/// Why the template can't be expanded for the item; empty if it can.
std::string expansionFault(const Item &item, const CheckoutOptions &options) {
    const CString &key = item.archiveItem ? IPN::CMCheckOutFromArchive : IPN::CMCheckOut;
    if (CMProperty::getToolProperty(key, nullptr, 0, false) == nullptr) {
        return "the CM tool has no command for it (property " + key.str() + ")";
    }
    TemplateArguments arguments;
    arguments.addMode(options.lock);
    arguments.addLabel(options.label);
    arguments.addArchive();
    if (item.archiveItem) {
        arguments.addArchiveItem(*item.archiveItem);
    } else if (const IUnit *const unit = unitNow(item)) {
        arguments.addUnit(*unit);
    }
    CString command;
    CString error;
    if (CMProperty::ExpandProperty(key, arguments.list(), command, error, false) != 0) {
        return {};
    }
    const auto unresolved = findUnresolved(command.str(), arguments.list());
    return "the command (property " + key.str() + ") can't be expanded" +
           (unresolved.chain.empty() ? std::string() : ": " + whatFailed(unresolved));
}

std::string whyNotRun(const Item &item, const Journal &journal) {
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
        return "the reload of an earlier unit replaced it before its turn; check it out again";
    }
    return journal.earlyErrors().empty() ? "it was not worked on" : journal.earlyErrors().front();
}

/// Whether a No to all stands for a file that no tool ran for: it was passed over without a question of its own.
bool coveredByEarlierAnswer(const Item &item, const Journal &journal) {
    return item.result.before.file.writable && !journal.questions().empty();
}

/// No tool ran for the item: its command could not be made, or it was skipped, or never came to its turn.
void explainNoRun(Item &item, const CheckoutOptions &options, const Journal &journal) {
    if (auto fault = isInterrupted() ? std::string() : expansionFault(item, options); !fault.empty()) {
        item.result.outcome = Outcome::failed;
        item.result.reason = std::move(fault);
    } else if (item.result.outcome != Outcome::skipped) {
        item.result.reason = whyNotRun(item, journal);
    }
}

void judgeAll(std::vector<Item> &items, const CheckoutOptions &options, const Journal &journal) {
    std::vector<std::string> files;
    std::ranges::transform(items, std::back_inserter(files), [](const Item &item) { return item.result.file; });
    const auto runs = itemRuns(files, journal);
    for (std::size_t i = 0; i < items.size(); ++i) {
        Item &item = items[i];
        item.result.after = stateOf(item.result.file, unitNow(item));
        ItemRun run = runs[i];
        run.asked = run.asked || coveredByEarlierAnswer(item, journal);
        judge(item.result, run, options.lock);
        if (run.run == nullptr) {
            explainNoRun(item, options, journal);
        } else if (item.result.outcome == Outcome::done && item.reloadFailed) {
            item.result.outcome = Outcome::failed;
            item.result.reason = "the unit could not be reloaded, and holds what it held";
        } else if (item.result.outcome == Outcome::done && item.archiveItem && !item.result.after.inModel &&
                   !item.archiveItem->getType().IsEmpty()) {
            item.result.outcome = Outcome::failed;
            item.result.reason = "the file could not be loaded into the model";
        }
    }
}

void reloadRecursive(std::vector<Item> &items) {
    std::vector<std::string> files;
    for (const Item &item : items) {
        if (pictureOf(item.result.file).exists) {
            files.push_back(item.result.file);
        }
    }
    const auto failed = reloadFiles(files);
    for (Item &item : items) {
        item.reloadFailed = failed.contains(item.result.file);
    }
}

using Operation = std::function<int(CMArgumentList &, CMDiagnosticList &)>;

CheckoutReport run(Context &context, std::vector<Item> items, const CheckoutOptions &options,
                   const Operation &operation) {
    TemplateArguments arguments;
    arguments.addMode(options.lock);
    arguments.addLabel(options.label);
    CMDiagnosticList diagnostics;
    Journal &journal = context.session.startJournal(items.size());
    const std::size_t errorsBefore = context.output.errorCount();
    int result = 0;
    {
        const CMAskOnCheckoutGuard answersHoldTillHere;
        const UndoBracket undo;
        result = operation(arguments.list(), diagnostics);
        if (options.recursive && !isInterrupted()) {
            reloadRecursive(items);
        }
    }
    context.output.status().clear();
    for (const CMDiagnostic &diagnostic : diagnostics) {
        context.output.message(diagnostic.getResult() == 0 ? Output::Kind::error : Output::Kind::information,
                               diagnostic.getDiagnostic().str());
    }
    judgeAll(items, options, journal);
    CheckoutReport report;
    std::ranges::transform(items, std::back_inserter(report.items),
                           [](Item &item) { return std::move(item.result); });
    report.good = result != 0 && context.output.errorCount() == errorsBefore &&
                  std::ranges::all_of(report.items,
                                      [](const CheckoutResult &item) { return item.outcome == Outcome::done; });
    return report;
}

} // namespace

CheckoutReport checkOutUnits(Context &context, const std::vector<IUnit *> &units, const CheckoutOptions &options) {
    std::vector<Item> items;
    CMUnitList list;
    for (IUnit *const unit : units) {
        items.push_back(itemOf(unit, unit->getFullFileName().str()));
        list.AddTail(unit);
    }
    return run(context, std::move(items), options, [&](CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
        return options.recursive ? CMFacade::RecCheckOut(list, arguments, diagnostics)
                                 : CMFacade::CheckOut(list, arguments, diagnostics);
    });
}

CheckoutReport checkOutFromArchive(Context &context, const std::vector<std::string> &names,
                                   const CheckoutOptions &options) {
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
    // The recursive form asks this flag whether to save the model, and clears it after the first save.
    static_cast<void>(CMProperty::saveOnCheckout(1));
    return run(context, std::move(items), options, [&](CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
        return options.recursive ? CMFacade::RecCheckOutFromArchive(list, arguments, diagnostics)
                                 : CMFacade::CheckOutFromArchive(list, arguments, diagnostics);
    });
}

} // namespace orchard_cm
