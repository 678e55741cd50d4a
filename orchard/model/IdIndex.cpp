#include "orchard/model/IdIndex.h"

namespace orchard {

std::size_t IdIndex::homeOf(const ElementId &id) const { return std::hash<ElementId>()(id) & (table_.size() - 1); }

/// The place of the identifier, or the free one where it would go.
std::size_t IdIndex::placeOf(const ElementId &id) const {
    std::size_t place = homeOf(id);
    while (table_[place] != nullptr && table_[place]->id() != id) {
        place = (place + 1) & (table_.size() - 1);
    }
    return place;
}

void IdIndex::grow() {
    std::vector<Element *> old(table_.empty() ? 64 : table_.size() * 2);
    old.swap(table_);
    for (Element *const element : old) {
        if (element != nullptr) {
            table_[placeOf(element->id())] = element;
        }
    }
}

Element *IdIndex::add(Element &element) {
    if ((used_ + 1) * 4 > table_.size() * 3) {
        grow();
    }
    Element *&place = table_[placeOf(element.id())];
    if (place != nullptr) {
        return place;
    }
    place = &element;
    ++used_;
    return nullptr;
}

void IdIndex::remove(const Element &element) {
    if (table_.empty()) {
        return;
    }
    std::size_t hole = placeOf(element.id());
    if (table_[hole] != &element) {
        return;
    }
    // Entries behind the hole move up unless that would put them in front of their home.
    const std::size_t mask = table_.size() - 1;
    for (std::size_t at = (hole + 1) & mask; table_[at] != nullptr; at = (at + 1) & mask) {
        const std::size_t home = homeOf(table_[at]->id());
        if (((at - home) & mask) >= ((at - hole) & mask)) {
            table_[hole] = table_[at];
            hole = at;
        }
    }
    table_[hole] = nullptr;
    --used_;
}

Element *IdIndex::find(const ElementId &id) const { return table_.empty() ? nullptr : table_[placeOf(id)]; }

} // namespace orchard
