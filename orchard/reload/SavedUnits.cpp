// Reads units that were reloaded in one project again in the other projects that use their files.
#include "CM/host/CurrentWorkspace.h"
#include "orchard/model/Workspace.h"
#include "orchard/reload/ReloadReport.h"
#include "orchard/storage/UnitReplacement.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

void CurrentWorkspace::ApplySavedUnitsListToNonActiveProjects() {
    using namespace orchard;
    auto &workspace = orchard::Workspace::instance();
    std::unordered_set<std::string> done;
    Problems problems;
    for (const auto &saved : workspace.takeSavedUnits()) {
        if (!done.insert(saved.file).second) {
            continue; // reloaded more than once; the file is read once
        }
        for (const auto &model : workspace.models()) {
            UnitElement *const unit = model->files().byPath(saved.file);
            if (model.get() == saved.model || model.get() == workspace.active() || unit == nullptr ||
                unit->is(UnitElement::stub)) {
                continue;
            }
            if (unit->modified()) {
                problems.push_back({saved.file, 0, 0,
                                    "the unit '" + unit->name() + "' of the project '" + model->project().name() +
                                        "' has unsaved changes"});
                continue;
            }
            Replacement replacement = reread(*unit);
            reportReloadWarnings(replacement.warnings);
            std::ranges::move(replacement.problems, std::back_inserter(problems));
        }
    }
    reportReloadProblems(problems);
}
