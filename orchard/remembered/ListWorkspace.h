// Lists the units of a project. Does not read a large project if no file has changed since it was last listed.
#pragma once

#include "orchard/OrchardApi.h"
#include "orchard/storage/Projects.h"
#include "orchard/storage/UnitSearch.h"

#include <functional>
#include <string>

namespace orchard {

struct ListOptions {
    OpenOptions opening; ///< its callbacks for progress and cancelling are also used while the files are checked
    /// Opens the entire project; called unless a workspace record can be used. May throw.
    std::function<IProject &()> open;
    /// Returns whether the rows depend only on the model's files, not on a provider that is queried when the
    /// project is opened. Called while the project is active.
    std::function<bool()> areRowsInFiles;
};

/// Visits, in order, the rows that workspaceUnits() returns for the project at `path` (see openProject()). A row
/// and its unit are valid until `visit` returns; of the unit, only the header may be queried.
ORCHARD_API void listWorkspace(const std::string &path, const ListOptions &options,
                               const std::function<void(const UnitRow &)> &visit);

} // namespace orchard
