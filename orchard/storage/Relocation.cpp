#include "orchard/storage/Relocation.h"

#include "orchard/model/Paths.h"
#include "orchard/model/Workspace.h"
#include "orchard/storage/DiskStorage.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace orchard {

Relocation::Relocation(Model &model, std::vector<Target> targets, Element *newOwner)
    : model_(model), targets_(std::move(targets)), newOwner_(newOwner) {
    for (const Target &target : targets_) {
        Element *const owner = target.unit->owner();
        OwnerChange &change = owners.emplace_back();
        change.unit = &target.unit->unit();
        change.oldOwner = owner->asUnit() == nullptr ? nullptr : &owner->asUnit()->unit();
        change.newOwner = newOwner == nullptr ? change.oldOwner : &newOwner->asUnit()->unit();
    }
    plan();
}

std::vector<UnitElement *> Relocation::topUnits() const {
    std::vector<UnitElement *> tops;
    for (const Target &target : targets_) {
        tops.push_back(target.unit);
    }
    return tops;
}

void Relocation::exchangeFacts() {
    for (Target &target : targets_) {
        UnitElement &unit = *target.unit;
        std::string name = std::exchange(target.name, unit.name());
        unit.setName(name);
        std::string file = std::exchange(target.fileName, unit.fileName());
        unit.setFileName(file);
        std::string directory = std::exchange(target.directory, unit.directorySetting());
        unit.setDirectorySetting(directory);
    }
    for (auto &[unit, other] : elsewhere_) {
        std::string present = unit->elsewhere();
        unit->setElsewhere(other);
        other = std::move(present);
    }
}

void Relocation::enterNewOwner() {
    if (newOwner_ == nullptr) {
        return;
    }
    std::unordered_map<Element *, std::unordered_set<const Element *>> leaving;
    std::vector<Element *> order;
    for (const Target &target : targets_) {
        auto &those = leaving[target.unit->owner()];
        if (those.empty()) {
            order.push_back(target.unit->owner());
        }
        those.insert(target.unit);
    }
    std::unordered_map<const Element *, std::unique_ptr<Element>> taken;
    formerOwners_.clear();
    for (Element *const owner : order) {
        FormerOwner &former = formerOwners_.emplace_back(FormerOwner{owner, {}});
        for (Element::Placed &placed : owner->takeChildren(leaving[owner])) {
            Element *const element = placed.element.get();
            former.places.emplace_back(placed.index, element);
            taken.emplace(element, std::move(placed.element));
        }
    }
    for (const Target &target : targets_) {
        newOwner_->addChild(std::move(taken[target.unit]));
    }
}

void Relocation::returnToOwners() {
    if (newOwner_ == nullptr) {
        return;
    }
    std::unordered_set<const Element *> returning;
    for (const Target &target : targets_) {
        returning.insert(target.unit);
    }
    std::unordered_map<const Element *, std::unique_ptr<Element>> taken;
    for (Element::Placed &placed : newOwner_->takeChildren(returning)) {
        const Element *const element = placed.element.get();
        taken.emplace(element, std::move(placed.element));
    }
    for (const FormerOwner &former : formerOwners_) {
        std::vector<Element::Placed> placed;
        for (const auto &[index, element] : former.places) {
            placed.push_back({index, std::move(taken[element])});
        }
        former.owner->putChildren(std::move(placed));
    }
    formerOwners_.clear();
}

void Relocation::apply() {
    enterNewOwner();
    exchangeFacts();
}

void Relocation::revert() {
    returnToOwners();
    exchangeFacts();
}

/// Notes the current places of the unit's files (with `below`, of all units below it, too), and finds the
/// directories that can be moved as one.
void Relocation::findPlaces(UnitElement &unit, bool below) {
    struct Step {
        Element *element;
        std::optional<std::size_t> directory;
    };
    std::vector<Step> open{{&unit, std::nullopt}};
    while (!open.empty()) {
        Step step = open.back();
        open.pop_back();
        UnitElement *const inner = step.element->asUnit();
        if (inner != nullptr && inner->hasFile()) {
            const bool hasDirectory = below && !inner->directorySetting().empty() && inner->elsewhere().empty();
            if (hasDirectory && !step.directory && isDirectoryOf(*inner, inner->ownDirectory())) {
                step.directory = directories_.size();
                directories_.push_back({inner, inner->ownDirectory(), {}});
            }
            std::string from = inner->fullFileName();
            const bool goesAlong = step.directory && liesIn(from, directories_[*step.directory].from);
            places_.push_back({inner, std::move(from), {}, goesAlong ? step.directory : std::nullopt});
            if (inner->is(UnitElement::stub) && !step.directory && below && inner->elsewhere().empty()) {
                refuse(*inner,
                       "the unit isn't loaded, so the files of the units in it are unknown; load it first");
            }
        }
        if (!below) {
            return;
        }
        const auto &children = step.element->children();
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            open.push_back({child->get(), step.directory});
        }
    }
}

/// Determines, with the intended names and owners, where the files go. Files kept elsewhere stay where they are.
void Relocation::findNewPlaces() {
    for (Place &place : places_) {
        UnitElement &unit = *place.unit;
        if (!unit.elsewhere().empty() && unit.ownDirectory() != directoryOfPath(place.from) && !place.directory) {
            elsewhere_.emplace_back(&unit, unit.elsewhere());
            unit.setElsewhere(relativePath(place.from, unit.owner()->asUnit()->ownDirectory()));
        }
        place.to = unit.fullFileName();
    }
    for (Directory &directory : directories_) {
        directory.to = directory.unit->ownDirectory();
    }
}

void Relocation::checkPlaces() {
    std::unordered_set<const UnitElement *> moving;
    std::unordered_set<std::string> taken;
    for (const Place &place : places_) {
        moving.insert(place.unit);
    }
    for (const Place &place : places_) {
        if (place.from == place.to) {
            continue;
        }
        const UnitElement *const there = model_.files().byPath(place.to);
        if (there != nullptr && !moving.contains(there)) {
            refuse(*place.unit, "the file " + place.to + " belongs to the unit '" + there->name() + "'");
        } else if (!taken.insert(place.to).second) {
            refuse(*place.unit, "two units would have the file " + place.to);
        }
    }
    if (problems.empty()) {
        std::vector<std::pair<const UnitElement *, std::string>> faults;
        moves_.findFaults(faults);
        for (auto &[unit, why] : faults) {
            refuse(*unit, std::move(why));
        }
    }
}

void Relocation::listFiles() {
    for (Directory &directory : directories_) {
        if (directory.from != directory.to) {
            directory.index = moves_.addDirectory(directory.from, directory.to);
        }
    }
    std::unordered_set<std::size_t> listed;
    for (const Place &place : places_) {
        if (place.from == place.to) {
            continue;
        }
        std::optional<std::size_t> goesWith;
        if (place.directory) {
            const Directory &directory = directories_[*place.directory];
            goesWith = directory.index;
            const std::string along = directory.to + place.from.substr(directory.from.size());
            if (along != place.to) {
                files.push_back({&place.unit->unit(), place.from, place.to, false});
            }
            if (listed.insert(*place.directory).second) {
                files.push_back({&directory.unit->unit(), directory.from, directory.to, true});
            }
        } else {
            files.push_back(fileChangeOf(*place.unit, place.from, place.to));
        }
        units.push_back(&place.unit->unit());
        moves_.add(*place.unit, place.from, place.to, goesWith);
    }
}

/// Checks the files that list the units, or what is kept elsewhere: they must be writable.
void Relocation::checkOwners() {
    std::unordered_set<const UnitElement *> seen;
    const auto add = [&](const Element *element, const UnitElement &about) {
        UnitElement *const holder = element == nullptr ? nullptr : element->saveUnit();
        if (holder == nullptr || !seen.insert(holder).second) {
            return;
        }
        listing_.push_back(holder);
        if (const std::string fault = faultOfSaving(*holder); !fault.empty()) {
            refuse(about,
                   "the file " + holder->fullFileName() + ", which lists the unit, can't be written: " + fault);
        }
    };
    for (const Target &target : targets_) {
        add(target.unit->owner(), *target.unit);
    }
    for (const Target &target : targets_) {
        add(newOwner_, *target.unit);
    }
    for (const auto &entry : elsewhere_) {
        add(entry.first->owner(), *entry.first);
    }
}

void Relocation::plan() {
    for (const Target &target : targets_) {
        const UnitElement &unit = *target.unit;
        const bool sameOwner = newOwner_ == nullptr;
        const bool stays =
            target.directory == unit.directorySetting() &&
            (sameOwner || newOwner_->asUnit()->ownDirectory() == unit.owner()->asUnit()->ownDirectory());
        findPlaces(*target.unit, !stays);
    }
    if (!problems.empty()) {
        return;
    }
    apply();
    findNewPlaces();
    revert();
    if (targets_.front().unit->hasFile()) {
        oldPath = places_.front().from;
        newPath = places_.front().to;
    }
    listFiles();
    checkPlaces();
    checkOwners();
}

void Relocation::markChanged() {
    std::vector<Element *> touched;
    for (const FormerOwner &former : formerOwners_) {
        touched.push_back(former.owner);
    }
    if (newOwner_ != nullptr) {
        touched.push_back(newOwner_);
    }
    for (const auto &entry : elsewhere_) {
        touched.push_back(entry.first->owner());
    }
    for (const Target &target : targets_) {
        UnitElement &unit = *target.unit;
        if (newOwner_ == nullptr) {
            touched.push_back(unit.owner());
        }
        // Its own file contains its name, which must be written, and its owner, which can wait.
        const bool written = unit.isSaveUnit() && !unit.is(UnitElement::stub) && !unit.isReadOnly();
        if (written || !unit.hasFile()) {
            touched.push_back(&unit);
        }
    }
    for (Element *const element : touched) {
        for (Element *const one : {element, static_cast<Element *>(element->saveUnit())}) {
            formerlyModified_.emplace_back(one, one->modified());
        }
        element->changed();
    }
}

void Relocation::begin() {
    if (phase_ != Phase::planned || !problems.empty()) {
        return;
    }
    phase_ = Phase::begun;
    moves_.makeRoom();
    model_.changePlaces(topUnits(), [this] { apply(); });
    model_.noteName();
    markChanged();
}

void Relocation::takeBack(Problems &told) {
    moves_.takeBack(told);
    model_.changePlaces(topUnits(), [this] { revert(); });
    model_.noteName();
    // The first note of an element holds its original state.
    for (auto at = formerlyModified_.rbegin(); at != formerlyModified_.rend(); ++at) {
        at->first->setModified(at->second);
    }
    for (const Target &target : targets_) {
        Workspace::instance().noteChange(target.unit->object());
    }
    phase_ = Phase::over;
}

void Relocation::cancel() {
    if (phase_ == Phase::begun) {
        Problems ignored; // nothing has been moved yet
        takeBack(ignored);
    }
}

/// Updates the units to match files that a tool has moved, and saves again what could not be moved.
void Relocation::settleUnits(Problems &told) {
    for (const FileMoves::Entry &entry : moves_.entries()) {
        if (entry.failed && entry.unit->isSaveUnit() && !entry.unit->is(UnitElement::stub)) {
            saveOwnFile(*entry.unit, told);
        } else if ((entry.state == FileMoves::State::done || entry.state == FileMoves::State::both) &&
                   !entry.byUs) {
            entry.unit->updateHeader(true);
            entry.unit->updateMode();
        }
    }
}

bool Relocation::save(Problems &told, bool canGoBack) {
    // Former owners come first: a unit that no file lists is less harmful than one that two files list.
    for (UnitElement *const unit : listing_) {
        const bool saved = saveOwnFile(*unit, told);
        if (!saved && canGoBack) {
            return false;
        }
        canGoBack = false;
    }
    // Does not write a lost file again: the new file would hide that the unit's own one is elsewhere.
    std::unordered_set<const UnitElement *> lost;
    for (const FileMoves::Entry &entry : moves_.entries()) {
        if (entry.state == FileMoves::State::lost) {
            lost.insert(entry.unit);
        }
    }
    for (const Target &target : targets_) {
        UnitElement &unit = *target.unit;
        if (!lost.contains(&unit) && unit.isSaveUnit() && unit.modified() && !unit.is(UnitElement::stub)) {
            saveOwnFile(unit, told);
        }
    }
    return true;
}

Problems Relocation::finish(FilesBy by) {
    using State = FileMoves::State;
    Problems told;
    if (!problems.empty() || phase_ == Phase::over) {
        return told;
    }
    begin();
    moves_.look();
    const bool copied = by == FilesBy::tool && moves_.any(State::both);
    const bool touched = moves_.any(State::done) || moves_.any(State::halfWay) || copied;
    for (const FileMoves::Entry &entry : moves_.entries()) {
        if (entry.state == State::lost) {
            complete = false;
            const char *const who = by == FilesBy::tool ? "the CM tool" : "another program";
            told.push_back({entry.from, 0, 0,
                            std::string("the file is neither here nor at ") + entry.to + ": " + who +
                                " has moved it elsewhere or removed it"});
            if (!touched && !moves_.any(State::open)) {
                takeBack(told); // nothing has reached its new place
                return told;
            }
        }
        const bool left = entry.state == State::open || entry.state == State::halfWay;
        const bool barred = entry.state == State::blocked || (entry.state == State::both && !copied);
        if (barred) {
            told.push_back({entry.to, 0, 0,
                            "this file is in the way; the file of the unit '" + entry.unit->name() +
                                "' is still " + entry.from});
        }
        if (barred && !touched) {
            takeBack(told);
            return told;
        }
        if (by == FilesBy::tool && left && !touched) {
            told.push_back({entry.from, 0, 0,
                            "the CM tool has not moved the file to " + entry.to + "; the model is unchanged"});
            takeBack(told);
            return told;
        }
        if (by == FilesBy::tool && left) {
            told.push_back(
                {entry.from, 0, 0,
                 "the CM tool has left the file behind; it was moved to " + entry.to + " without the tool"});
        } else if (entry.state == State::both && !barred) {
            told.push_back(
                {entry.from, 0, 0,
                 "the file still exists, but the unit '" + entry.unit->name() + "' now uses " + entry.to});
        }
    }
    const bool moved = moves_.carryOut(told);
    if (!touched && (!moved || !save(told, true))) {
        takeBack(told);
        return told;
    }
    settleUnits(told);
    if (touched) {
        static_cast<void>(save(told, false));
    }
    phase_ = Phase::over;
    stands = true;
    return told;
}

} // namespace orchard
