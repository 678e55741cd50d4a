#include "apps/orchard-cm/operation/Item.h"

#include "CM/host/IProject.h"
#include "apps/orchard-cm/model/UnitFacts.h"

namespace orchard_cm {

namespace {

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

} // namespace

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

void lookAgain(Item &item) {
    const IUnit *const unit = unitNow(item);
    const std::string file = unit != nullptr ? unit->getFullFileName().str() : item.result.file;
    item.result.after = stateOf(file, unit);
    item.result.newFile = file == item.result.file ? std::string() : file;
    if (unit != nullptr && item.handle) {
        const std::string path = factsOf(*unit).path;
        item.result.newName = path == item.result.name ? std::string() : path;
    }
}

} // namespace orchard_cm
