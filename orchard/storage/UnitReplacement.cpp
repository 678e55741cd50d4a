#include "orchard/storage/UnitReplacement.h"

#include "orchard/model/Workspace.h"
#include "orchard/storage/FactsInPlace.h"
#include "orchard/storage/SubtreeReading.h"
#include "orchard/storage/UnitDocument.h"
#include "orchard/storage/UnitReader.h"

namespace orchard {

namespace {

Replacement refusedAt(const std::string &path, std::string why) {
    return {nullptr, {{path, 0, 0, std::move(why)}}, {}};
}

/// A new object to replace `old`, which knows its future place.
std::unique_ptr<Element> freshFor(const UnitElement &old) {
    std::unique_ptr<Element> fresh = makeElement(old.kind());
    fresh->setModel(old.model());
    fresh->setOwner(old.owner());
    fresh->asUnit()->takeStateOf(old);
    return fresh;
}

/// Gives an object that stays its new contents.
UnitElement *exchangeContents(Model &model, UnitElement &unit, UnitElement &fresh, SubtreeReading &reading) {
    model.leaveSubtree(unit);
    reading.moveKeptUnits();
    const std::unique_ptr<Element> former = makeElement(unit.kind());
    unit.giveChildrenTo(*former);
    fresh.giveChildrenTo(unit);
    unit.takeFacts(fresh);
    takeUnitFacts(unit, fresh);
    unit.setHeader(fresh.header());
    unit.setBodyHash(fresh.bodyHash());
    unit.set(UnitElement::readOnlyFile, fresh.is(UnitElement::readOnlyFile));
    unit.set(UnitElement::stub, false);
    unit.set(UnitElement::stubByChoice, false);
    unit.Element::setModified(false);
    model.enterSubtree(unit);
    return &unit;
}

/// Replaces an object with a new one and destroys it.
UnitElement *exchangeObject(Model &model, UnitElement &old, std::unique_ptr<Element> fresh,
                            SubtreeReading *reading) {
    Element &owner = *old.owner();
    const std::size_t place = owner.indexOf(old);
    model.leaveSubtree(old);
    if (reading != nullptr) {
        reading->moveKeptUnits();
    }
    Element &entered = *fresh;
    const std::unique_ptr<Element> former = owner.replaceChild(place, std::move(fresh));
    model.enterSubtree(entered);
    return entered.asUnit();
}

/// Updates the existing objects from a file that names what the unit already contains.
Replacement update(UnitElement &unit, UnitElement &picture, const FileText &file) {
    takeFactsOver(unit, picture);
    takeFileState(unit, file);
    Workspace::instance().noteChange(unit.object());
    return {&unit, {}, {}};
}

/// Reads the unit and all loaded units below it again.
Replacement exchange(UnitElement &old, const FileText &file) {
    Model &model = *old.model();
    std::unique_ptr<Element> fresh = freshFor(old);
    SubtreeReading reading(model, &old);
    if (!reading.read(*fresh->asUnit(), file)) {
        return {nullptr, reading.takeProblems(), {}};
    }
    const bool keepsObject = old.owner() == nullptr || old.is(UnitElement::stub);
    const bool newId = old.id() != fresh->id();
    UnitElement *const present = keepsObject ? exchangeContents(model, old, *fresh->asUnit(), reading)
                                             : exchangeObject(model, old, std::move(fresh), &reading);
    if (newId && present->owner() != nullptr) {
        present->owner()->setModified(true); // its owner's file names the unit by the former identifier
    }
    Workspace::instance().noteChange(present->object());
    return {present, {}, reading.takeWarnings()};
}

} // namespace

Replacement replaceUnit(UnitElement &old, const FileText &file, const std::string &path, bool alwaysNew) {
    UnitDocument document;
    Fault fault;
    const auto refused = [&] { return Replacement{nullptr, {problemAt(path, file.text, fault)}, {}}; };
    if (!document.parse(file.text, fault)) {
        return refused();
    }
    if (document.kind() != old.kind()) {
        fault = {document.rootOffset(), "the file holds a " + std::string(traitsOf(document.kind()).tag) +
                                            "; expected a " + std::string(traitsOf(old.kind()).tag)};
        return refused();
    }
    if (!alwaysNew && !old.is(UnitElement::stub)) {
        const std::unique_ptr<Element> picture = freshFor(old);
        std::vector<UnitElement *> listed;
        if (!document.fill(*picture->asUnit(), old.model(), listed, fault)) {
            return refused();
        }
        if (haveSameStructure(old, *picture)) {
            return update(old, *picture->asUnit(), file);
        }
    }
    return exchange(old, file);
}

Replacement reread(UnitElement &unit, bool alwaysNew) {
    const std::string path = unit.fullFileName();
    FileText file;
    return file.read(path) == FileRead::done ? replaceUnit(unit, file, path, alwaysNew)
                                             : refusedAt(path, file.fault);
}

Replacement unload(UnitElement &unit) {
    const std::string path = unit.fullFileName();
    if (unit.owner() == nullptr || !unit.isSaveUnit()) {
        return refusedAt(path, "only a unit with a file of its own, other than the project, can be unloaded");
    }
    const Element *changed = nullptr;
    visitSubtree<const Element>(unit, [&](const Element &element) {
        changed = changed == nullptr && element.modified() ? &element : changed;
    });
    if (changed != nullptr) {
        return refusedAt(path, "'" + changed->name() + "' holds changes that were not saved");
    }
    Model &model = *unit.model();
    std::unique_ptr<Element> fresh = freshFor(unit);
    UnitElement &stub = *fresh->asUnit();
    stub.setId(unit.id());
    stub.setName(unit.name());
    stub.setHeader(unit.header());
    stub.set(UnitElement::readOnlyFile, unit.is(UnitElement::readOnlyFile));
    stub.set(UnitElement::stub, true);
    stub.set(UnitElement::stubByChoice, true);
    return {exchangeObject(model, unit, std::move(fresh), nullptr), {}, {}};
}

} // namespace orchard
