#include "CM/host/Iterators.h"

#include "tests/support/recording_host/ObjectState.h"

using recording::ObjectState;

namespace {

template <class WANTED, class LIST> std::vector<WANTED *> those(const LIST &objects) {
    std::vector<WANTED *> found;
    for (auto *object : objects) {
        if (auto *wanted = dynamic_cast<WANTED *>(object)) {
            found.push_back(wanted);
        }
    }
    return found;
}

} // namespace

IUnitIterator::IUnitIterator(const IObjectList &objects, int /*flag*/) : IObIterator(those<IUnit>(objects)) {}
IUnitIterator::IUnitIterator(const IUnitList &units, int /*flag*/) : IObIterator(those<IUnit>(units)) {}
IFileIterator::IFileIterator(const IFileList &files) : IObIterator(those<IFile>(files)) {}

IUnitAggregatesIterator::IUnitAggregatesIterator(const IUnit *unit, int /*flag*/) {
    std::vector<IUnit *> units = those<IUnit>(ObjectState::of(unit).inside);
    units.insert(units.begin(), const_cast<IUnit *>(unit));
    assign(std::move(units));
}

IAggregatesIterator::IAggregatesIterator(const IDObject *object, int /*flag*/)
    : IObIterator(ObjectState::of(object).inside) {}
