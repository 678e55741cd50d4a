#include "apps/orchard-cm/operation/Item.h"

#include "CM/host/IProject.h"
#include "CM/platform/Files.h"
#include "apps/orchard-cm/model/UnitFacts.h"

namespace orchard_cm {

namespace {

ItemState stateOf(const IUnit *unit) {
    ItemState state;
    if (unit != nullptr) {
        const UnitFacts facts = factsOf(*unit);
        state.inModel = true;
        state.version = facts.version;
        state.state = facts.state;
        state.locker = facts.locker;
        state.object = unit;
    }
    return state;
}

ItemResult::Outcome outcomeOf(CMOutcome::Kind kind) {
    switch (kind) {
    case CMOutcome::Kind::done:
    case CMOutcome::Kind::nothingToDo:
        return ItemResult::Outcome::done;
    case CMOutcome::Kind::declined:
        return ItemResult::Outcome::skipped;
    default:
        return ItemResult::Outcome::failed;
    }
}

} // namespace

Item itemOf(IUnit *unit, const std::string &file) {
    Item item;
    item.result.file = file;
    item.result.name = unit != nullptr ? factsOf(*unit).path : file;
    item.result.before = stateOf(unit);
    item.result.before.exists = platform::fileExists(file);
    item.result.before.writable = platform::hasWritePermission(file);
    if (unit != nullptr) {
        item.handle = std::make_unique<UnitHandle>(*unit);
    }
    return item;
}

IUnit *unitNow(const Item &item) {
    IUnit *const unit = item.handle ? item.handle->unit() : nullptr;
    return unit != nullptr ? unit : IUnit::getByFile(item.result.file);
}

void take(Item &item, const CMOutcome &outcome, bool keepsOutput) {
    ItemResult &result = item.result;
    item.isReported = true;
    item.hasRun = !outcome.runs.empty();
    result.outcome = outcomeOf(outcome.kind);
    result.reason = outcome.reason.str();
    result.fileChanged = outcome.fileChanged;
    result.reloaded = outcome.reload == CMOutcome::Reload::content;
    item.isFileReported = !outcome.file.IsEmpty();
    result.after.exists = outcome.fileExists;
    result.after.writable = outcome.fileWritable;
    for (const CMToolRun &run : outcome.runs) {
        result.output += keepsOutput ? run.output.str() : std::string();
    }
}

void recordStateAfter(Item &item) {
    ItemResult &result = item.result;
    const IUnit *const unit = unitNow(item);
    const std::string file = unit != nullptr ? unit->getFullFileName().str() : result.file;
    ItemState now = stateOf(unit);
    now.exists = item.isFileReported ? result.after.exists : platform::fileExists(file);
    now.writable = item.isFileReported ? result.after.writable : platform::hasWritePermission(file);
    result.after = now;
    if (!item.isFileReported) {
        result.fileChanged = now.exists != result.before.exists;
    }
    result.newFile = file == result.file ? std::string() : file;
    if (unit != nullptr && item.handle) {
        const std::string name = factsOf(*unit).path;
        result.newName = name == result.name ? std::string() : name;
    }
}

} // namespace orchard_cm
