#include "apps/orchard-cm/model/UnitSelection.h"

#include "apps/orchard-cm/base/Failure.h"
#include "apps/orchard-cm/base/Suggest.h"
#include "orchard/storage/UnitSearch.h"

#include <filesystem>
#include <unordered_set>

namespace orchard_cm {

namespace {

constexpr std::size_t shownCandidates = 8;

[[noreturn]] void failAmbiguous(const std::string &words, const std::vector<IUnit *> &candidates) {
    std::string list;
    for (std::size_t i = 0; i < candidates.size() && i < shownCandidates; ++i) {
        list += (i == 0 ? "" : ", ") + orchard::unitRow(*candidates[i]).path;
    }
    if (candidates.size() > shownCandidates) {
        list += " and " + std::to_string(candidates.size() - shownCandidates) + " more";
    }
    throw Failure(ExitCode::failed, "more than one unit has the name '" + words + "': " + list,
                  "Name the unit by its path in the model or by its file.");
}

[[noreturn]] void failUnknown(const IProject &project, const std::string &words) {
    Suggester suggester(words);
    const bool isPath = words.find('/') != std::string::npos;
    for (const auto &row : orchard::workspaceUnits(project)) {
        suggester.offer(isPath ? row.path : row.name);
        suggester.offer(isPath ? row.file : std::filesystem::path(row.file).filename().string());
    }
    throw Failure(ExitCode::failed, "the model has no unit '" + words + "'",
                  "Run 'orchard-cm list' to see all units.")
        .meaning(suggester.best());
}

} // namespace

IUnit &unitNamed(const IProject &project, const std::string &words) {
    const auto search = orchard::findUnit(project, words);
    if (search) {
        return *search.unit;
    }
    if (!search.candidates.empty()) {
        failAmbiguous(words, search.candidates);
    }
    failUnknown(project, words);
}

std::vector<IUnit *> unitsNamed(const IProject &project, const std::vector<std::string> &words) {
    std::vector<IUnit *> units;
    std::unordered_set<const IUnit *> seen;
    for (const auto &word : words) {
        IUnit &unit = unitNamed(project, word);
        if (seen.insert(&unit).second) {
            units.push_back(&unit);
        }
    }
    return units;
}

std::vector<IUnit *> withUnitsBelow(const IProject &project, const std::vector<IUnit *> &units) {
    // Owners come first in the list of units, so each unit needs only a look at its owner's entry.
    std::unordered_set<const IDObject *> taken(units.begin(), units.end());
    std::vector<IUnit *> all;
    for (const auto &row : orchard::workspaceUnits(project)) {
        const IDObject *owner = row.unit->getOwner();
        while (owner != nullptr && !owner->isSaveUnit()) {
            owner = owner->getOwner();
        }
        if (taken.contains(row.unit) || (owner != nullptr && taken.contains(owner))) {
            taken.insert(row.unit);
            all.push_back(row.unit);
        }
    }
    return all;
}

} // namespace orchard_cm
