#include "orchard/storage/ModelLoader.h"

#include "orchard/model/Model.h"

#include <utility>

namespace orchard {

namespace {

/// Enough to know that much is wrong.
constexpr std::size_t mostProblems = 100;

} // namespace

Problem unloadedFor(const UnitElement &unit, Problem problem) {
    problem.text += "; the " + std::string(traitsOf(unit.kind()).tag) + " '" + unit.name() +
                    "' stays unloaded until the file is mended, or fetched or checked out again";
    return problem;
}

bool ModelLoader::load(UnitElement &unit) { return run(unit, nullptr); }
bool ModelLoader::load(UnitElement &unit, const FileText &text) { return run(unit, &text); }

bool ModelLoader::tellAndAsk(std::size_t done) {
    constexpr std::size_t step = 256;
    const std::size_t known = ahead_->asked() + 1;
    if (done % step == 0 || done == known) {
        if (options_.progress) {
            options_.progress(done, known);
        }
        cancelled_ = options_.cancelled && options_.cancelled();
    }
    return !cancelled_;
}

bool ModelLoader::run(UnitElement &unit, const FileText *known) {
    ReadAhead ahead(model_);
    ahead_ = &ahead;
    first_ = &unit;
    known_ = known;
    UnitReader reader(model_);
    ReadAhead::Handed next{&unit, known != nullptr ? reader.fill(unit, *known) : reader.read(unit)};
    for (std::size_t done = 1; next.unit != nullptr; ++done) {
        take(*next.unit, std::move(next.reading));
        if (!tellAndAsk(done)) {
            return false;
        }
        if (problems_.size() >= mostProblems) {
            break;
        }
        next = ahead.next();
    }
    return problems_.empty();
}

void ModelLoader::take(UnitElement &unit, UnitReading reading) {
    if (reading.outcome == UnitReading::missing && !looksAfterMissing(unit)) {
        return;
    }
    if (reading.outcome == UnitReading::refused && !staysUnloaded(unit, reading)) {
        return;
    }
    if (!admitContent(unit)) {
        return; // what it lists would be wrong for the same reason, or lead back to it for ever
    }
    for (UnitElement *const listed : reading.listed) {
        ahead_->ask(*listed, !wanted || wanted(*listed));
    }
}

bool ModelLoader::looksAfterMissing(UnitElement &unit) {
    if (&unit == first_) {
        problems_.push_back({unit.fullFileName(), 0, 0, "the file is missing"});
        return false;
    }
    if (!(missing && missing(unit)) && options_.warning) {
        options_.warning({unit.fullFileName(), 0, 0,
                          "the file of the " + std::string(traitsOf(unit.kind()).tag) + " '" + unit.name() +
                              "' is missing; the unit stays unloaded until it is fetched"});
    }
    return true;
}

/// A unit that is listed may stay a stub; the first one is what was asked for.
bool ModelLoader::staysUnloaded(UnitElement &unit, UnitReading &reading) {
    if (&unit != first_ && broken && broken(unit, reading.problem)) {
        return true;
    }
    problems_.push_back(std::move(reading.problem));
    return false;
}

/// Hands on the unit and the elements in its file. Units that it lists are handed on with their own files, and
/// so their names are known by then.
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

/// What is wrong with an element, with its place in the unit's file.
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
