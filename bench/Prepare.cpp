// Measures how the time of the steps before the first tool run of a check out (barred units, duplicates, the
// validator) grows from ten thousand units to a hundred thousand.
#include "bench/Project.h"
#include "bench/Works.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMTranscation.h"
#include "CM/CMSupport/core/CMUnitValidator.h"

#include <algorithm>
#include <stdexcept>

namespace bench {

namespace {

// Chooses units from all parts of the model, so that a few units gain as little from the processor's caches as
// many units do, and the ratio shows the steps and not the memory.
std::vector<IUnit *> everyTenth(const std::vector<IUnit *> &units) {
    std::vector<IUnit *> chosen;
    for (std::size_t at = 0; at < units.size(); at += 10) {
        chosen.push_back(units[at]);
    }
    return chosen;
}

// Adds every tenth unit a second time.
std::vector<IUnit *> withDuplicates(std::vector<IUnit *> units) {
    const std::size_t count = units.size();
    for (std::size_t at = 0; at < count; at += 10) {
        units.push_back(units[at]);
    }
    return units;
}

double prepare(const std::vector<IUnit *> &selected, int expected) {
    CMUnitList units = listOf(selected);
    return secondsOf([&] {
        const CMTranscation transaction(nullptr, 1, CMTxnCheckOut, "");
        CMTranscation::checkUnitsForOperation(units);
        CMFacade::removeDuplicatesFromItemList(units);
        CMUnitValidator validator;
        validator.init(units);
        for (IUnit *const unit : units) {
            if (!validator.isUnitMarkedForValidation(unit) || !validator.isValidUnit(unit)) {
                throw std::runtime_error("a unit of the list is not valid");
            }
        }
        validator.getValidUnitList(units);
        if (units.GetCount() != expected) {
            throw std::runtime_error("the list has " + std::to_string(units.GetCount()) + " units");
        }
    });
}

} // namespace

bool prepareCheckOut(const Setting &setting) {
    const int many = setting.scaled(100000);
    const int few = many / 10;
    const OpenProject open(largeProject(setting.scratch, many));
    std::vector<IUnit *> all = open.units();
    all.resize(static_cast<std::size_t>(many));
    const std::vector<IUnit *> manyUnits = withDuplicates(all);
    const std::vector<IUnit *> fewUnits = withDuplicates(everyTenth(all));

    const Pair pair = measurePaired(
        std::max(setting.runs, 15), [&] { return prepare(manyUnits, many); },
        [&] { return prepare(fewUnits, few); });
    const Row row =
        timedRow("prepare a check out of " + std::to_string(many) + " units / " + std::to_string(few), pair, 11);
    print(row);
    return row.ok();
}

} // namespace bench
