// Lists the units of a project. Does not read a large project if no file has changed since it was last listed.
#pragma once

#include "orchard/OrchardApi.h"
#include "orchard/storage/Projects.h"
#include "orchard/storage/UnitSearch.h"

#include <functional>
#include <string>

namespace orchard {

struct ListOptions {
    OpenOptions opening; ///< its progress and cancelling also apply to the check of the files
    /// Opens the entire project; called unless a kept list can be used. May throw.
    std::function<IProject &()> open;
    /// Whether the rows come only from the files of the model, not from a provider that is queried at opening.
    /// Called while the project is active.
    std::function<bool()> areRowsInFiles;
};

/// Visits the rows of workspaceUnits() of the project at `path` (as for openProject()) in order. A row and its
/// unit are valid until `visit` returns; of the unit, only the header may be queried.
ORCHARD_API void listWorkspace(const std::string &path, const ListOptions &options,
                               const std::function<void(const UnitRow &)> &visit);

} // namespace orchard
