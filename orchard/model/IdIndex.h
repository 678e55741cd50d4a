// Finds elements by identifier.
#pragma once

#include "orchard/model/Element.h"
#include "orchard/model/HashTable.h"

#include <cstddef>

namespace orchard {

class IdIndex {
  public:
    /// Adds an element. If another one bears its identifier, that one is returned and nothing is added.
    Element *add(Element &element);
    /// Takes the element out if it is the one that stands under its identifier.
    void remove(const Element &element);
    [[nodiscard]] Element *find(const ElementId &id) const;
    [[nodiscard]] std::size_t size() const { return elements_.size(); }

  private:
    HashTable<Element> elements_;
};

} // namespace orchard
