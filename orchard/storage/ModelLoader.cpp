#include "orchard/storage/ModelLoader.h"

#include "orchard/model/Model.h"

#include <algorithm>
#include <utility>

namespace orchard {

namespace {

/// Enough to show the extent of the damage.
constexpr std::size_t mostProblems = 100;

} // namespace

Problem unloadedFor(const UnitElement &unit, Problem problem) {
    problem.text += "; the " + std::string(traitsOf(unit.kind()).tag) + " '" + unit.name() +
                    "' is not loaded until the file is fixed, or fetched or checked out again";
    return problem;
}

bool ModelLoader::load(UnitElement &unit) { return run(unit, nullptr); }
bool ModelLoader::load(UnitElement &unit, const FileText &text) { return run(unit, &text); }

/// Reports progress and asks about cancelling from time to time; too many problems also stop the reading.
bool ModelLoader::mayContinue() {
    constexpr std::size_t step = 256;
    if (taken_ % step == 0 || taken_ == listed_) {
        if (options_.progress) {
            options_.progress(taken_, listed_);
        }
        cancelled_ = options_.cancelled && options_.cancelled();
    }
    return !cancelled_ && problems_.size() < mostProblems;
}

bool ModelLoader::run(UnitElement &unit, const FileText *known) {
    first_ = &unit;
    known_ = known;
    UnitReader reader(model_);
    bool continues = take(unit, known != nullptr ? reader.fill(unit, *known) : reader.read(unit));
    while (continues && !nextLevel_.empty()) {
        std::vector<ListedUnit> level = std::exchange(nextLevel_, {});
        continues = runLevel(level);
    }
    return continues && problems_.empty();
}

bool ModelLoader::runLevel(std::span<ListedUnit> level) {
    // A wide level is read in parts, so that progress is shown and the user can cancel between them.
    constexpr std::size_t most = 4096;
    for (std::size_t at = 0; at < level.size(); at += most) {
        const std::span<ListedUnit> part = level.subspan(at, std::min(most, level.size() - at));
        readFiles(model_, part);
        for (ListedUnit &listed : part) {
            if (!take(*listed.unit, std::move(listed.reading))) {
                return false;
            }
        }
    }
    return true;
}

/// Enters a unit that was read; returns false if the reading ends here.
bool ModelLoader::take(UnitElement &unit, UnitReading reading) {
    ++taken_;
    enter(unit, std::move(reading));
    return mayContinue();
}

void ModelLoader::enter(UnitElement &unit, UnitReading reading) {
    if (reading.outcome == UnitReading::missing && !handleMissing(unit)) {
        return;
    }
    if (reading.outcome == UnitReading::refused && !staysUnloaded(unit, reading)) {
        return;
    }
    if (!admitContent(unit)) {
        return; // the units it lists would be wrong for the same reason, or lead back to it endlessly
    }
    for (UnitElement *const listed : reading.listed) {
        nextLevel_.push_back({listed, !wanted || wanted(*listed), {}});
    }
    listed_ += reading.listed.size();
}

bool ModelLoader::handleMissing(UnitElement &unit) {
    if (&unit == first_) {
        problems_.push_back({unit.fullFileName(), 0, 0, "the file is missing"});
        return false;
    }
    if (!(missing && missing(unit)) && options_.warning) {
        options_.warning({unit.fullFileName(), 0, 0,
                          "the file of the " + std::string(traitsOf(unit.kind()).tag) + " '" + unit.name() +
                              "' is missing; the unit is not loaded until its file is fetched"});
    }
    return true;
}

/// Whether a failed unit may stay a stub: a listed one may, the first one is what the caller asked for.
bool ModelLoader::staysUnloaded(UnitElement &unit, UnitReading &reading) {
    if (&unit != first_ && broken && broken(unit, reading.problem)) {
        return true;
    }
    problems_.push_back(std::move(reading.problem));
    return false;
}

/// Passes on the unit and the elements in its file. The units that it lists are passed on with their own files,
/// when their names are known.
bool ModelLoader::admitContent(UnitElement &unit) {
    open_.assign(1, &unit);
    while (!open_.empty()) {
        Element &element = *open_.back();
        open_.pop_back();
        if (std::string why = admit ? admit(element) : std::string(); !why.empty()) {
            problems_.push_back(problemOf(unit, element, std::move(why)));
            return false;
        }
        for (const auto &child : element.children()) {
            const UnitElement *const inner = child->asUnit();
            if (inner == nullptr || !inner->isSaveUnit()) {
                open_.push_back(child.get());
            }
        }
    }
    return true;
}

/// Describes what is wrong with an element, with its place in the unit's file.
Problem ModelLoader::problemOf(const UnitElement &unit, const Element &element, std::string why) const {
    const std::string path = unit.fullFileName();
    if (unit.is(UnitElement::stub)) {
        return {path, 0, 0, std::move(why)};
    }
    FileText file;
    if (&unit == first_ && known_ != nullptr) {
        file = *known_;
    } else if (file.read(path) != FileRead::done) {
        return {path, 0, 0, std::move(why)};
    }
    const std::size_t at = file.text.find(element.id().text());
    return at == std::string::npos ? Problem{path, 0, 0, std::move(why)}
                                   : problemAt(path, file.text, {at, std::move(why)});
}

} // namespace orchard
