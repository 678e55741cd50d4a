#include "orchard/storage/ReadInto.h"

#include "orchard/model/Paths.h"
#include "orchard/storage/SubtreeReading.h"
#include "orchard/storage/UnitDocument.h"

#include <memory>

namespace orchard {

namespace {

/// Where the file of a unit is.
struct FilePlace {
    std::string file;
    std::string elsewhere;
    std::string directory;
    bool isExternal = false;

    static FilePlace of(const UnitElement &unit) {
        return {unit.fileName(), unit.elsewhere(), unit.directorySetting(), unit.is(UnitElement::external)};
    }
    /// The place of a path, for a unit in this owner.
    static FilePlace at(const std::string &path, const Element &owner) {
        const std::string base = owner.saveUnit()->ownDirectory();
        FilePlace place{std::string(fileOfPath(path)), {}, {}, !liesIn(path, owner.model()->unitsDirectory())};
        if (directoryOfPath(path) != base) {
            place.elsewhere = relativePath(path, base);
            place.isExternal = true;
        }
        return place;
    }
    void giveTo(UnitElement &unit) const {
        unit.setFileName(file);
        unit.setElsewhere(elsewhere);
        unit.setDirectorySetting(directory);
        unit.set(UnitElement::external, isExternal);
    }
};

/// The owner for a unit that is new to the model.
Element *ownerFor(Model &model, const UnitDocument &document, const std::string &directory) {
    if (Element *const named = model.find(document.owner());
        named != nullptr && mayHold(named->kind(), document.kind())) {
        return named;
    }
    Element *best = nullptr;
    visitSubtree<Element>(model.project(), [&](Element &element) {
        const UnitElement *const unit = element.asUnit();
        if (best == nullptr && unit != nullptr && !unit->directorySetting().empty() &&
            mayHold(unit->kind(), document.kind()) && unit->ownDirectory() == directory) {
            best = &element;
        }
    });
    if (best == nullptr && mayHold(Kind::project, document.kind())) {
        best = &model.project();
    }
    return best;
}

/// A file to be read into the model.
struct Arrival {
    Model &model;
    const std::string &path;
    const FileText &file;
    const UnitDocument &document;

    [[nodiscard]] Replacement refused(std::string why) const {
        return {nullptr, {problemAt(path, file.text, {document.rootOffset(), std::move(why)})}, {}};
    }
};

/// Whether the element with the identifier of the arriving file is a unit that may take that file as its own.
bool mayFollow(Element &same, bool takeOver) {
    const UnitElement *const unit = same.asUnit();
    FileText present;
    return unit != nullptr && unit->isSaveUnit() && unit->owner() != nullptr &&
           (takeOver || present.read(unit->fullFileName()) == FileRead::missing);
}

/// Makes the unit follow its file, which has moved.
Replacement follow(const Arrival &arrival, UnitElement &unit) {
    const FilePlace former = FilePlace::of(unit);
    const FilePlace place = FilePlace::at(arrival.path, *unit.owner());
    arrival.model.changePlaces(unit, [&] { place.giveTo(unit); });
    Replacement replacement = replaceUnit(unit, arrival.file, arrival.path, true);
    if (replacement.unit == nullptr) {
        arrival.model.changePlaces(unit, [&] { former.giveTo(unit); });
    } else {
        replacement.unit->owner()->changed();
    }
    return replacement;
}

Replacement addTo(const Arrival &arrival, Element &owner) {
    std::unique_ptr<Element> fresh = makeElement(arrival.document.kind());
    fresh->setModel(&arrival.model);
    fresh->setOwner(&owner);
    FilePlace::at(arrival.path, owner).giveTo(*fresh->asUnit());
    SubtreeReading reading(arrival.model, nullptr);
    if (!reading.read(*fresh->asUnit(), arrival.file)) {
        return {nullptr, reading.takeProblems(), {}};
    }
    Element &entered = owner.addChild(std::move(fresh));
    arrival.model.enterSubtree(entered);
    owner.changed(); // the owner's file has to name the new unit
    return {entered.asUnit(), {}, reading.takeWarnings()};
}

Replacement bringIn(const Arrival &arrival, bool takeOver) {
    if (Element *const same = arrival.model.find(arrival.document.id())) {
        return mayFollow(*same, takeOver) ? follow(arrival, *same->asUnit())
                                          : arrival.refused("the identifier " + arrival.document.id().text() +
                                                            " belongs to another element, '" + same->name() + "'");
    }
    if (Element *const owner =
            ownerFor(arrival.model, arrival.document, std::string(directoryOfPath(arrival.path)))) {
        return addTo(arrival, *owner);
    }
    return arrival.refused("the model has no owner for this " +
                           std::string(traitsOf(arrival.document.kind()).tag) +
                           "; expected owner=\"...\" to name one that is loaded");
}

/// Why no unit may have the file; empty if one may.
std::string faultOfPlace(const std::string &path) {
    if (const std::string bad = faultOfFileName(fileOfPath(path)); !bad.empty()) {
        return "the name of the file is refused: " + bad;
    }
    if (const std::string bad = faultOfPath(path); !bad.empty()) {
        return "the directory of the file is refused: " + bad;
    }
    return {};
}

} // namespace

Replacement readInto(Model &model, const std::string &path, bool takeOver) {
    if (UnitElement *const there = model.files().byPath(path)) {
        if (there->kind() == Kind::embedded) {
            there->updateMode(); // its content is not part of the model
            return {there, {}, {}};
        }
        return reread(*there, true);
    }
    FileText file;
    if (file.read(path) != FileRead::done) {
        return {nullptr, {{path, 0, 0, file.fault}}, {}};
    }
    UnitDocument document;
    if (Fault fault; !document.parse(file.text, fault)) {
        return {nullptr, {problemAt(path, file.text, fault)}, {}};
    }
    if (std::string bad = faultOfPlace(path); !bad.empty()) {
        return {nullptr, {{path, 0, 0, std::move(bad)}}, {}};
    }
    return bringIn({model, path, file, document}, takeOver);
}

} // namespace orchard
