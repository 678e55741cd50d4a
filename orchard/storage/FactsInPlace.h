// Updates existing objects with the contents of their file.
#pragma once

#include "orchard/model/UnitElement.h"

namespace orchard {

/// Returns whether the files of both units contain the same elements and list the same units.
[[nodiscard]] bool haveSameStructure(const Element &left, const Element &right);

/// Copies the data of `fresh`, which has the same structure, to `old`, and likewise for the elements in the same
/// file.
void takeFactsOver(Element &old, Element &fresh);

/// Takes over the data that only units have.
void takeUnitFacts(UnitElement &unit, UnitElement &fresh);

} // namespace orchard
