#include "orchard/storage/FactsInPlace.h"

#include "orchard/model/Model.h"

#include <algorithm>

namespace orchard {

bool haveSameStructure(const Element &left, const Element &right) {
    if (left.kind() != right.kind() || left.id() != right.id() ||
        left.children().size() != right.children().size()) {
        return false;
    }
    return std::ranges::equal(left.children(), right.children(), [](const auto &one, const auto &other) {
        const UnitElement *const oneUnit = one->asUnit();
        const UnitElement *const otherUnit = other->asUnit();
        if (oneUnit == nullptr || !oneUnit->hasFile()) {
            return (otherUnit == nullptr || !otherUnit->hasFile()) && haveSameStructure(*one, *other);
        }
        return one->kind() == other->kind() && one->id() == other->id() &&
               oneUnit->fileName() == otherUnit->fileName() && oneUnit->elsewhere() == otherUnit->elsewhere() &&
               oneUnit->directorySetting() == otherUnit->directorySetting() &&
               oneUnit->is(UnitElement::reference) == otherUnit->is(UnitElement::reference) &&
               oneUnit->is(UnitElement::external) == otherUnit->is(UnitElement::external);
    });
}

void takeUnitFacts(UnitElement &unit, UnitElement &fresh) {
    unit.set(UnitElement::hiddenFromCM, fresh.is(UnitElement::hiddenFromCM));
    if (fresh.archive() != nullptr || unit.archive() != nullptr) {
        unit.makeArchive() = fresh.makeArchive();
    }
}

void takeFactsOver(Element &old, Element &fresh) {
    // Identifiers and files are the same, but a fragment is indexed by the element that it represents.
    const bool reindexed = old.kind() == Kind::fragment;
    if (reindexed) {
        old.model()->leave(old);
    }
    old.takeFacts(fresh);
    if (UnitElement *const unit = old.asUnit()) {
        takeUnitFacts(*unit, *fresh.asUnit());
    }
    if (reindexed) {
        old.model()->enter(old);
    }
    old.setModified(false);
    for (std::size_t at = 0; at < old.children().size(); ++at) {
        const UnitElement *const unit = old.children()[at]->asUnit();
        if (unit == nullptr || !unit->hasFile()) {
            takeFactsOver(*old.children()[at], *fresh.children()[at]);
        }
    }
}

} // namespace orchard
