#include "apps/orchard-cm/operation/ArchiveNames.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/host/IUnit.h"
#include "apps/orchard-cm/base/Failure.h"
#include "apps/orchard-cm/model/UnitSelection.h"
#include "orchard/model/Paths.h"
#include "orchard/storage/UnitSearch.h"

#include <filesystem>
#include <unordered_set>

namespace orchard_cm {

namespace {

namespace fs = std::filesystem;

std::string nameOf(const std::string &word) {
    CString layout;
    if (CMProperty::getToolPropertyValue(keys::repository, layout, false) != 0 && !layout.IsEmpty()) {
        return word;
    }
    if (orchard::isAbsolutePath(word)) {
        return orchard::normalPath(word, {});
    }
    std::error_code ignored;
    const std::string units = CMProperty::getWorkingDir().str();
    std::string here = orchard::normalPath(word, fs::current_path(ignored).string());
    // A file that is to be fetched from the archive may not exist yet, so its existence decides nothing.
    if (orchard::liesIn(here, orchard::normalPath(units, {})) || IUnit::getByFile(here) != nullptr) {
        return here;
    }
    return orchard::normalPath(word, units);
}

/// Returns the name in the archive. Throws for a name that a template can't quote.
std::string checkedNameOf(const std::string &word) {
    std::string name = nameOf(word);
    if (const auto fault = orchard::faultOfPath(name); !fault.empty()) {
        throw Failure(ExitCode::usage, "the file '" + word + "' can't be given to a tool: " + fault);
    }
    return name;
}

/// Returns the file, and the files of the units below it.
std::vector<std::string> withFilesBelow(const IProject &project, const std::string &name) {
    std::vector<std::string> files;
    std::error_code ignored;
    if (fs::is_directory(name, ignored)) {
        for (const auto &row : orchard::workspaceUnits(project)) {
            if (const auto file = row.unit->getFullFileName().str(); orchard::liesIn(file, name)) {
                files.push_back(file);
            }
        }
    } else if (IUnit *const unit = IUnit::getByFile(name)) {
        for (const IUnit *const below : withUnitsBelow(project, {unit})) {
            files.push_back(below->getFullFileName().str());
        }
    } else {
        files.push_back(name);
    }
    return files;
}

} // namespace

std::vector<std::string> archiveNames(const IProject &project, const std::vector<std::string> &words,
                                      bool recursive) {
    std::vector<std::string> names;
    std::unordered_set<std::string> seen;
    for (const auto &word : words) {
        const std::string name = checkedNameOf(word);
        for (auto &file : recursive ? withFilesBelow(project, name) : std::vector<std::string>{name}) {
            if (seen.insert(file).second) {
                names.push_back(std::move(file));
            }
        }
    }
    return names;
}

} // namespace orchard_cm
