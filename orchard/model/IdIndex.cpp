#include "orchard/model/IdIndex.h"

namespace orchard {

namespace {

Element *findIn(const HashTable<Element> &elements, std::size_t hash, const ElementId &id) {
    return elements.find(hash, [&id](const Element &element) { return element.id() == id; });
}

} // namespace

Element *IdIndex::add(Element &element) {
    const std::size_t hash = std::hash<ElementId>()(element.id());
    if (Element *const there = findIn(elements_, hash, element.id())) {
        return there;
    }
    elements_.add(hash, element);
    return nullptr;
}

void IdIndex::remove(const Element &element) { elements_.remove(std::hash<ElementId>()(element.id()), element); }

Element *IdIndex::find(const ElementId &id) const { return findIn(elements_, std::hash<ElementId>()(id), id); }

} // namespace orchard
