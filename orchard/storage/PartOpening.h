// Opening a project with few of its units loaded.
#pragma once

#include "orchard/model/ElementId.h"
#include "orchard/storage/Projects.h"

#include <string>
#include <unordered_set>

namespace orchard {

/// Opens a project as openProject() does, but loads the project unit and the named units only; those that are not
/// listed by a loaded one are not known at all. Good for what asks no other unit, such as the look-up of
/// properties.
[[nodiscard]] OpenResult openPart(const std::string &path, const std::unordered_set<ElementId> &units);

} // namespace orchard
