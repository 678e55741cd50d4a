#include "orchard/storage/UnitReplacement.h"

#include "orchard/model/Paths.h"
#include "orchard/model/Workspace.h"
#include "orchard/storage/ModelLoader.h"
#include "orchard/storage/UnitHeader.h"

#include <algorithm>
#include <unordered_set>

namespace orchard {

namespace {

Replacement refused(const std::string &path, std::string why) {
    return {nullptr, {{path, 0, 0, std::move(why)}}, {}};
}

/// Whether both, as their files tell it, are made of the same elements and list the same units.
bool sameStructure(const Element &left, const Element &right) {
    if (left.kind() != right.kind() || left.id() != right.id() ||
        left.children().size() != right.children().size()) {
        return false;
    }
    return std::ranges::equal(left.children(), right.children(), [](const auto &one, const auto &other) {
        const UnitElement *const oneUnit = one->asUnit();
        const UnitElement *const otherUnit = other->asUnit();
        if (oneUnit == nullptr || !oneUnit->hasFile()) {
            return (otherUnit == nullptr || !otherUnit->hasFile()) && sameStructure(*one, *other);
        }
        return one->kind() == other->kind() && one->id() == other->id() &&
               oneUnit->fileName() == otherUnit->fileName() && oneUnit->elsewhere() == otherUnit->elsewhere() &&
               oneUnit->directorySetting() == otherUnit->directorySetting() &&
               oneUnit->is(UnitElement::reference) == otherUnit->is(UnitElement::reference) &&
               oneUnit->is(UnitElement::external) == otherUnit->is(UnitElement::external);
    });
}

void takeUnitFacts(UnitElement &unit, UnitElement &fresh) {
    unit.set(UnitElement::hiddenFromCM, fresh.is(UnitElement::hiddenFromCM));
    if (fresh.archive() != nullptr || unit.archive() != nullptr) {
        unit.makeArchive() = fresh.makeArchive();
    }
}

/// Gives `old` the facts of `fresh`, and so on for the elements in the same file.
void takeFactsOver(Element &old, Element &fresh) {
    // Identifiers and files are the same; but a fragment is indexed by what it stands for.
    const bool reindexed = old.kind() == Kind::fragment;
    if (reindexed) {
        old.model()->leave(old);
    }
    old.takeFacts(fresh);
    if (UnitElement *const unit = old.asUnit()) {
        takeUnitFacts(*unit, *fresh.asUnit());
    }
    if (reindexed) {
        old.model()->enter(old);
    }
    old.setModified(false);
    for (std::size_t at = 0; at < old.children().size(); ++at) {
        const UnitElement *const unit = old.children()[at]->asUnit();
        if (unit == nullptr || !unit->hasFile()) {
            takeFactsOver(*old.children()[at], *fresh.children()[at]);
        }
    }
}

void takeFileState(UnitElement &unit, const FileText &file) {
    unit.setHeader(findHeader(file.text).text);
    unit.setBodyHash(bodyHashOf(file.text));
    unit.set(UnitElement::readOnlyFile, file.readOnly);
}

/// A fresh object for the place of `old`, which knows where it will stand.
std::unique_ptr<Element> freshFor(const UnitElement &old) {
    std::unique_ptr<Element> fresh = makeElement(old.kind());
    fresh->setModel(old.model());
    fresh->setOwner(old.owner());
    fresh->asUnit()->takeStateOf(old);
    return fresh;
}

/// The reading of a whole subtree that is to stand in the place of another one, or to come in as new.
class Subtree {
  public:
    Subtree(Model &model, UnitElement *old) : model_(model), old_(old), loader_(model, options_) {
        loader_.wanted = [this](UnitElement &listed) { return isWanted(listed); };
        loader_.missing = [this](UnitElement &listed) { return keepsWithoutFile(listed); };
        loader_.broken = [this](UnitElement &listed, const Problem &problem) {
            return staysUnloaded(listed, problem);
        };
        loader_.admit = [this](Element &element) { return faultOf(element); };
        options_.warning = [this](const Problem &warning) { warnings_.push_back(warning); };
    }

    [[nodiscard]] bool read(UnitElement &fresh, const FileText &file) {
        return loader_.load(fresh, file) && keptUnitsFit();
    }
    [[nodiscard]] Problems takeProblems() { return std::move(loader_.problems()); }
    [[nodiscard]] Problems takeWarnings() { return std::move(warnings_); }

    /// Units that are not read anew leave the old subtree, which is going, and take their places in the new one.
    void moveKeptUnits() {
        for (const auto &[placeholder, kept] : kept_) {
            Element &owner = *placeholder->owner();
            const std::size_t place = owner.indexOf(*placeholder);
            std::unique_ptr<Element> moved = kept->owner()->takeChild(*kept);
            kept->setDirectorySetting(placeholder->directorySetting());
            kept->setFileName(placeholder->fileName());
            kept->setElsewhere(placeholder->elsewhere());
            for (const auto flag : {UnitElement::reference, UnitElement::external}) {
                kept->set(flag, placeholder->is(flag));
            }
            static_cast<void>(owner.replaceChild(place, std::move(moved)));
        }
    }

  private:
    /// The unit of this identifier in the subtree that is being replaced.
    [[nodiscard]] UnitElement *former(const Element &element) const {
        Element *const there = model_.find(element.id());
        const bool inside = there != nullptr && old_ != nullptr && (there == old_ || old_->owns(*there));
        return inside ? there->asUnit() : nullptr;
    }

    bool isWanted(UnitElement &listed) {
        UnitElement *const before = former(listed);
        if (before == nullptr) {
            return true;
        }
        if (before->modified() && before->kind() == listed.kind()) {
            kept_.emplace_back(&listed, before);
            return false;
        }
        listed.set(UnitElement::stubByChoice, before->is(UnitElement::stubByChoice));
        return !before->is(UnitElement::stub);
    }

    /// A unit that was loaded is not lost because its file is gone.
    bool keepsWithoutFile(UnitElement &listed) {
        UnitElement *const before = former(listed);
        if (before == nullptr || before->is(UnitElement::stub) || before->kind() != listed.kind()) {
            return false;
        }
        kept_.emplace_back(&listed, before);
        warnings_.push_back(
            {listed.fullFileName(), 0, 0,
             "the file is missing; the unit '" + before->name() + "' stays in the model as it was read before"});
        return true;
    }

    /// A unit that was loaded is not lost because its file is broken now; one that comes in can wait.
    bool staysUnloaded(UnitElement &listed, const Problem &problem) {
        if (former(listed) != nullptr) {
            return false;
        }
        warnings_.push_back(unloadedFor(listed, problem));
        return true;
    }

    /// Whether what is moved over is not in one of the new files, too.
    bool keptUnitsFit() {
        for (const auto &entry : kept_) {
            UnitElement *const kept = entry.second;
            visitSubtree<Element>(*kept, [&](Element &element) {
                if (&element != kept && !ids_.insert(element.id()).second) {
                    loader_.problems().push_back(
                        {kept->fullFileName(), 0, 0,
                         "the unit '" + kept->name() +
                             (kept->modified() ? "' holds unsaved changes, and '" : "' is not read anew, and '") +
                             element.name() + "' in it stands in another file now"});
                }
            });
        }
        return loader_.problems().empty();
    }

    std::string faultOf(Element &element) {
        Element *const there = model_.find(element.id());
        const bool elsewhere = there != nullptr && (old_ == nullptr || (there != old_ && !old_->owns(*there)));
        if (elsewhere || !ids_.insert(element.id()).second) {
            return "the identifier " + element.id().text() + " of '" + element.name() +
                   "' is borne by another element" + (elsewhere ? ", '" + there->name() + "'" : std::string());
        }
        UnitElement *const unit = element.asUnit();
        if (unit != nullptr && there != nullptr && there->asUnit() != nullptr) {
            unit->setCMState(there->asUnit()->cmState());
        }
        if (unit != nullptr && unit->hasFile()) {
            const std::string path = unit->fullFileName();
            const UnitElement *const holder = model_.files().byPath(path);
            const bool taken = holder != nullptr && (old_ == nullptr || (holder != old_ && !old_->owns(*holder)));
            if (taken || !paths_.insert(path).second) {
                return "the file " + path + " belongs to another unit already";
            }
        }
        return {};
    }

    Model &model_;
    UnitElement *old_;
    OpenOptions options_;
    ModelLoader loader_;
    std::unordered_set<ElementId> ids_;
    std::unordered_set<std::string> paths_;
    std::vector<std::pair<UnitElement *, UnitElement *>> kept_;
    Problems warnings_;
};

/// The new contents for an object that stays.
UnitElement *exchangeContents(Model &model, UnitElement &unit, UnitElement &fresh, Subtree &subtree) {
    model.leaveSubtree(unit);
    subtree.moveKeptUnits();
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

UnitElement *exchangeObject(Model &model, UnitElement &old, std::unique_ptr<Element> fresh, Subtree &subtree) {
    Element &owner = *old.owner();
    const std::size_t place = owner.indexOf(old);
    model.leaveSubtree(old);
    subtree.moveKeptUnits();
    Element &entered = *fresh;
    const std::unique_ptr<Element> former = owner.replaceChild(place, std::move(fresh));
    model.enterSubtree(entered);
    return entered.asUnit();
}

Replacement replaceWith(UnitElement &old, const FileText &file, const std::string &path, bool alwaysNew) {
    Model &model = *old.model();
    UnitDocument document;
    Fault fault;
    if (!document.parse(file.text, fault)) {
        return {nullptr, {problemAt(path, file.text, fault)}, {}};
    }
    if (document.kind() != old.kind()) {
        fault = {document.rootOffset(), "the file holds a " + std::string(traitsOf(document.kind()).tag) +
                                            "; expected a " + std::string(traitsOf(old.kind()).tag)};
        return {nullptr, {problemAt(path, file.text, fault)}, {}};
    }
    if (!alwaysNew && !old.is(UnitElement::stub)) {
        const std::unique_ptr<Element> picture = freshFor(old);
        std::vector<UnitElement *> listed;
        if (!document.fill(*picture->asUnit(), &model, listed, fault)) {
            return {nullptr, {problemAt(path, file.text, fault)}, {}};
        }
        if (sameStructure(old, *picture)) {
            takeFactsOver(old, *picture);
            takeFileState(old, file);
            Workspace::instance().noteChange(old.object());
            return {&old, {}, {}};
        }
    }
    std::unique_ptr<Element> fresh = freshFor(old);
    Subtree subtree(model, &old);
    if (!subtree.read(*fresh->asUnit(), file)) {
        return {nullptr, subtree.takeProblems(), {}};
    }
    const bool keepsObject = old.owner() == nullptr || old.is(UnitElement::stub);
    const bool newId = old.id() != fresh->id();
    UnitElement *const stands = keepsObject ? exchangeContents(model, old, *fresh->asUnit(), subtree)
                                            : exchangeObject(model, old, std::move(fresh), subtree);
    if (newId && stands->owner() != nullptr) {
        stands->owner()->setModified(true); // its file names the unit by the former identifier
    }
    Workspace::instance().noteChange(stands->object());
    return {stands, {}, subtree.takeWarnings()};
}

/// Where a unit goes that the model does not know yet.
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

} // namespace

Replacement readAnew(UnitElement &unit, bool alwaysNew) {
    const std::string path = unit.fullFileName();
    FileText file;
    switch (file.read(path)) {
    case FileRead::done:
        return replaceWith(unit, file, path, alwaysNew);
    case FileRead::missing:
        return refused(path, "the file is missing");
    case FileRead::failed:
        break;
    }
    return refused(path, file.fault);
}

Replacement readInto(Model &model, const std::string &path, bool takeOver) {
    if (UnitElement *const there = model.files().byPath(path)) {
        if (there->kind() == Kind::embedded) {
            there->updateMode(); // its content is not part of the model
            return {there, {}, {}};
        }
        return readAnew(*there, true);
    }
    FileText file;
    switch (file.read(path)) {
    case FileRead::done:
        break;
    case FileRead::missing:
        return refused(path, "the file is missing");
    case FileRead::failed:
        return refused(path, file.fault);
    }
    UnitDocument document;
    Fault fault;
    if (!document.parse(file.text, fault)) {
        return {nullptr, {problemAt(path, file.text, fault)}, {}};
    }
    const std::string_view name = fileOfPath(path);
    if (const std::string bad = faultOfFileName(name); !bad.empty()) {
        return refused(path, "the name of the file is refused: " + bad);
    }
    if (const std::string bad = faultOfPath(path); !bad.empty()) {
        return refused(path, "the directory of the file is refused: " + bad);
    }
    const auto putAt = [&](UnitElement &unit, const std::string &base) {
        unit.setFileName(name);
        const std::string directory(directoryOfPath(path));
        unit.setElsewhere(directory == base ? std::string() : relativePath(path, base));
        unit.setDirectorySetting({});
        unit.set(UnitElement::external, !liesIn(path, model.unitsDirectory()) || !unit.elsewhere().empty());
    };
    if (Element *const same = model.find(document.id())) {
        UnitElement *const unit = same->asUnit();
        FileText present;
        if (unit == nullptr || !unit->isSaveUnit() || unit->owner() == nullptr ||
            (!takeOver && present.read(unit->fullFileName()) != FileRead::missing)) {
            fault = {document.rootOffset(), "the identifier " + document.id().text() +
                                                " is borne by another element, '" + same->name() + "'"};
            return {nullptr, {problemAt(path, file.text, fault)}, {}};
        }
        // The file has moved, and the unit follows it.
        std::string base;
        if (const UnitElement *const outer = unit->owner()->saveUnit()) {
            base = outer->ownDirectory();
        }
        const std::string formerName = unit->fileName();
        const std::string formerElsewhere = unit->elsewhere();
        const std::string formerDirectory = unit->directorySetting();
        const bool formerExternal = unit->is(UnitElement::external);
        model.changePlaces(*unit, [&] { putAt(*unit, base); });
        Replacement replacement = replaceWith(*unit, file, path, true);
        if (replacement.unit == nullptr) {
            model.changePlaces(*unit, [&] {
                unit->setFileName(formerName);
                unit->setElsewhere(formerElsewhere);
                unit->setDirectorySetting(formerDirectory);
                unit->set(UnitElement::external, formerExternal);
            });
        } else {
            replacement.unit->owner()->changed();
        }
        return replacement;
    }
    Element *const owner = ownerFor(model, document, std::string(directoryOfPath(path)));
    if (owner == nullptr) {
        fault = {document.rootOffset(), "the model has no owner for this " +
                                            std::string(traitsOf(document.kind()).tag) +
                                            "; expected owner=\"...\" to name one that is loaded"};
        return {nullptr, {problemAt(path, file.text, fault)}, {}};
    }
    std::unique_ptr<Element> fresh = makeElement(document.kind());
    fresh->setModel(&model);
    fresh->setOwner(owner);
    const UnitElement *const outer = owner->saveUnit();
    putAt(*fresh->asUnit(), outer == nullptr ? model.unitsDirectory() : outer->ownDirectory());
    Subtree subtree(model, nullptr);
    if (!subtree.read(*fresh->asUnit(), file)) {
        return {nullptr, subtree.takeProblems(), {}};
    }
    Element &entered = owner->addChild(std::move(fresh));
    model.enterSubtree(entered);
    owner->changed(); // its file has to name the new unit
    return {entered.asUnit(), {}, subtree.takeWarnings()};
}

Replacement unload(UnitElement &unit) {
    const std::string path = unit.fullFileName();
    if (unit.owner() == nullptr || !unit.isSaveUnit()) {
        return refused(path, "only a unit with a file of its own, other than the project, can be unloaded");
    }
    const Element *changed = nullptr;
    visitSubtree<const Element>(unit, [&](const Element &element) {
        changed = changed == nullptr && element.modified() ? &element : changed;
    });
    if (changed != nullptr) {
        return refused(path, "'" + changed->name() + "' holds changes that were not saved");
    }
    Model &model = *unit.model();
    Subtree none(model, nullptr);
    std::unique_ptr<Element> fresh = freshFor(unit);
    UnitElement &stub = *fresh->asUnit();
    stub.setId(unit.id());
    stub.setName(unit.name());
    stub.setHeader(unit.header());
    stub.set(UnitElement::readOnlyFile, unit.is(UnitElement::readOnlyFile));
    stub.set(UnitElement::stub, true);
    stub.set(UnitElement::stubByChoice, true);
    return {exchangeObject(model, unit, std::move(fresh), none), {}, {}};
}

} // namespace orchard
