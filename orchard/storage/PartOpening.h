// Opens a project with only a few of its units loaded.
#pragma once

#include "orchard/model/ElementId.h"
#include "orchard/storage/Projects.h"

#include <string>
#include <unordered_set>

namespace orchard {

/// Opens a project as openProject() does, but loads only the project unit and the named units; units that are
/// listed by no loaded unit don't exist in the model. Suitable for queries that need no other unit, such as the
/// look-up of properties.
[[nodiscard]] OpenResult openPart(const std::string &path, const std::unordered_set<ElementId> &units);

} // namespace orchard
