#include "orchard/remembered/ListWorkspace.h"

#include "orchard/remembered/RememberedWorkspace.h"
#include "orchard/storage/UnitSearch.h"

#include <algorithm>
#include <chrono>

namespace orchard {

namespace {

/// The number of units from which a list is kept; a smaller project is quickly opened.
constexpr std::size_t large = 1000;

bool isOpen(const std::string &path) {
    const std::string file = projectFileAt(path);
    return std::ranges::any_of(openProjects(), [&](IProject *project) { return projectFileOf(*project) == file; });
}

bool visitRemembered(const std::string &path, const ListOptions &options,
                     const std::function<void(const UnitRow &)> &visit) {
    const auto remembered = RememberedWorkspace::open(path, options.opening);
    if (remembered == nullptr || !options.areRowsInFiles()) {
        return false;
    }
    remembered->visitUnits(visit);
    return true;
}

} // namespace

void listWorkspace(const std::string &path, const ListOptions &options,
                   const std::function<void(const UnitRow &)> &visit) {
    const bool isFresh = !isOpen(path);
    if (isFresh && visitRemembered(path, options, visit)) {
        return;
    }
    const auto openedAt = std::chrono::system_clock::now();
    IProject &project = options.open();
    const std::vector<UnitRow> rows = workspaceUnits(project);
    if (isFresh && rows.size() >= large && options.areRowsInFiles()) {
        RememberedWorkspace::keep(project, openedAt);
    }
    std::ranges::for_each(rows, visit);
}

} // namespace orchard
