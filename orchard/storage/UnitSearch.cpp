#include "orchard/storage/UnitSearch.h"

#include "CM/platform/Files.h"
#include "orchard/model/Model.h"
#include "orchard/model/ModelView.h"
#include "orchard/model/Paths.h"

#include <algorithm>

namespace orchard {

namespace {

const Model &modelOf(const IProject &project) { return *Element::of(&project)->model(); }

std::vector<std::string_view> partsOf(std::string_view path) {
    std::vector<std::string_view> parts;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find_first_of("/\\"), path.size());
        if (end > 0) {
            parts.push_back(path.substr(0, end));
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return parts;
}

/// Whether the names on the way to the element end with `parts`.
bool endsWith(const Element &element, const std::vector<std::string_view> &parts) {
    const Element *at = &element;
    for (auto part = parts.rbegin(); part != parts.rend(); ++part, at = at->owner()) {
        if (at == nullptr || at->name() != *part) {
            return false;
        }
    }
    return true;
}

/// Whether the element is exactly this many levels below the project.
bool isCompletePath(const Element &element, std::size_t parts) {
    const Element *at = &element;
    for (; parts > 0 && at != nullptr; --parts) {
        at = at->owner();
    }
    return at != nullptr && at->owner() == nullptr;
}

UnitElement *byFile(const Model &model, std::string_view words) {
    const std::string here = normalPath(words, platform::currentDirectory().view());
    if (UnitElement *const unit = model.files().byPath(here)) {
        return unit;
    }
    return model.findByFile(words);
}

UnitSearch found(UnitElement &unit) { return {&unit.unit(), {}, {}}; }

UnitSearch ambiguous(std::string_view words, const std::vector<UnitElement *> &units) {
    UnitSearch search;
    search.error = "'" + std::string(words) + "' fits " + std::to_string(units.size()) + " units:";
    constexpr std::size_t shown = 10;
    for (std::size_t at = 0; at < units.size(); ++at) {
        search.candidates.push_back(&units[at]->unit());
        if (at < shown) {
            search.error += (at == 0 ? " " : ", ") + pathInModel(units[at]->object());
        }
    }
    search.error += units.size() > shown ? ", ...; name the unit by its path or its file"
                                         : "; name the unit by its path or its file";
    return search;
}

} // namespace

UnitSearch findUnit(const IProject &project, std::string_view words) {
    const Model &model = modelOf(project);
    const std::vector<std::string_view> parts = partsOf(words);
    if (parts.empty()) {
        return {nullptr, {}, "no unit is named"};
    }
    std::vector<UnitElement *> units;
    UnitElement *whole = nullptr;
    bool several = false;
    if (!isAbsolutePath(words)) {
        for (UnitElement *const unit : model.unitsNamed(parts.back())) {
            if (unit->kind() == Kind::embedded || !endsWith(*unit, parts)) {
                continue;
            }
            units.push_back(unit);
            // A complete path takes precedence over one without its leading parts; a single name is not a path.
            if (parts.size() > 1 && isCompletePath(*unit, parts.size())) {
                several = whole != nullptr;
                whole = unit;
            }
        }
    }
    if (whole != nullptr && !several) {
        return found(*whole);
    }
    if (units.size() == 1) {
        return found(*units.front());
    }
    if (units.size() > 1) {
        return ambiguous(words, units);
    }
    if (UnitElement *const unit = byFile(model, words)) {
        return found(*unit);
    }
    if (!hasSeparator(words)) {
        std::vector<UnitElement *> sameName = model.files().byName(words);
        if (sameName.size() > 1) {
            std::ranges::sort(sameName, {}, [](const UnitElement *unit) { return unit->fullFileName(); });
            return ambiguous(words, sameName);
        }
    }
    return {nullptr, {}, "no unit is named '" + std::string(words) + "', by name, path in the model or file"};
}

const char *unitStateText(UnitState state) {
    switch (state) {
    case UnitState::unloaded:
        return "U";
    case UnitState::readOnly:
        return "RO";
    case UnitState::readWrite:
        break;
    }
    return "RW";
}

UnitState unitState(const IUnit &unit) {
    if (unit.isStub()) {
        return UnitState::unloaded;
    }
    return unit.isReadOnly() ? UnitState::readOnly : UnitState::readWrite;
}

UnitRow unitRow(const IUnit &unit) {
    const UnitElement &element = *Element::of(&unit)->asUnit();
    const std::string file = element.fullFileName();
    const Model *const model = element.model();
    const bool inside = model != nullptr && liesIn(file, model->unitsDirectory());
    return {const_cast<IUnit *>(&unit),
            element.name(),
            pathInModel(unit),
            traitsOf(element.kind()).displayName,
            inside ? relativePath(file, model->unitsDirectory()) : file,
            unitState(unit)};
}

std::vector<UnitRow> workspaceUnits(const IProject &project) {
    std::vector<UnitRow> rows;
    visitSubtree<Element>(const_cast<UnitElement &>(modelOf(project).project()), [&](Element &element) {
        if (UnitElement *const unit = element.asUnit(); unit != nullptr && unit->hasFile()) {
            rows.push_back(unitRow(unit->unit()));
        }
    });
    return rows;
}

} // namespace orchard
