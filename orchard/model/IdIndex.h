// Finds elements by identifier: a hash table that holds nothing but pointers, since a large model has many
// hundred thousand elements.
#pragma once

#include "orchard/model/Element.h"

#include <cstddef>
#include <vector>

namespace orchard {

class IdIndex {
  public:
    /// Adds an element. If another one bears its identifier, that one is returned and nothing is added.
    Element *add(Element &element);
    /// Takes the element out if it is the one that stands under its identifier.
    void remove(const Element &element);
    [[nodiscard]] Element *find(const ElementId &id) const;
    [[nodiscard]] std::size_t size() const { return used_; }

  private:
    [[nodiscard]] std::size_t placeOf(const ElementId &id) const;
    [[nodiscard]] std::size_t homeOf(const ElementId &id) const;
    void grow();

    std::vector<Element *> table_; // open addressing, a power of two long, at most three quarters full
    std::size_t used_ = 0;
};

} // namespace orchard
