#include "CM/host/Iterators.h"

#include "orchard/model/UnitElement.h"

using orchard::Element;
using orchard::UnitElement;

namespace {

template <class WANTED, class LIST> std::vector<WANTED *> those(const LIST &objects) {
    std::vector<WANTED *> found;
    for (auto *const object : objects) {
        if (auto *const wanted = dynamic_cast<WANTED *>(object)) {
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
    std::vector<IUnit *> units;
    if (Element *const element = Element::of(unit)) {
        units.push_back(&element->asUnit()->unit());
        for (const auto &child : element->children()) {
            if (UnitElement *const inner = child->asUnit()) {
                units.push_back(&inner->unit());
            }
        }
    }
    assign(std::move(units));
}

IAggregatesIterator::IAggregatesIterator(const IDObject *object, int /*flag*/) {
    std::vector<IDObject *> inside;
    if (const Element *const element = Element::of(object)) {
        inside.reserve(element->children().size());
        for (const auto &child : element->children()) {
            inside.push_back(&child->object());
        }
    }
    assign(std::move(inside));
}
