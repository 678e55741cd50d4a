#include "orchard/change/Relocation.h"

#include "orchard/model/Paths.h"
#include "orchard/model/Workspace.h"
#include "orchard/storage/DiskStorage.h"

#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace orchard {

Relocation::Relocation(Model &model, std::vector<Target> targets, Element *newOwner)
    : Work(&model), targets_(std::move(targets)), newOwner_(newOwner) {
    std::vector<Directory> directories;
    std::vector<Place> places;
    for (const Target &target : targets_) {
        UnitElement &unit = *target.unit;
        Element *const owner = unit.owner();
        OwnerChange &change = owners.emplace_back();
        change.unit = &unit.unit();
        change.oldOwner = owner->asUnit() == nullptr ? nullptr : &owner->asUnit()->unit();
        change.newOwner = newOwner == nullptr ? change.oldOwner : &newOwner->asUnit()->unit();
        facts_.push_back({&unit, {target.name, target.fileName, target.directory, unit.elsewhere()}});
        findPlaces(target, directories, places);
    }
    if (!problems.empty()) {
        return;
    }
    if (targets_.front().unit->hasFile()) {
        oldPath = places.front().from;
        newPath = places.front().to;
    }
    listFiles(directories, places);
    checkPlaces(places);
    planTexts(places);
}

std::vector<UnitElement *> Relocation::topUnits() const {
    std::vector<UnitElement *> tops;
    for (const Target &target : targets_) {
        tops.push_back(target.unit);
    }
    return tops;
}

/// Finds out where the unit's file goes, and the files below it if its directory changes. Files kept elsewhere
/// stay where they are.
void Relocation::findPlaces(const Target &target, std::vector<Directory> &directories,
                            std::vector<Place> &places) {
    struct Step {
        Element *element;
        std::size_t base; ///< index of the directory that its owner will have
        std::optional<std::size_t> directory;
    };
    const Element *const owner = newOwner_ == nullptr ? target.unit->owner() : newOwner_;
    std::vector<std::string> bases{owner->asUnit()->ownDirectory()};
    const bool below = target.directory != target.unit->directorySetting() ||
                       bases.front() != target.unit->owner()->asUnit()->ownDirectory();
    std::vector<Step> open{{target.unit, 0, std::nullopt}};
    while (!open.empty()) {
        Step step = open.back();
        open.pop_back();
        UnitElement *const unit = step.element->asUnit();
        if (unit != nullptr && unit->hasFile()) {
            const std::string own = unit->ownDirectory();
            const std::string &base = bases[step.base];
            const bool isTop = unit == target.unit;
            const bool isElsewhere = !unit->elsewhere().empty();
            const bool findsDirectory = below && !unit->directorySetting().empty() && !isElsewhere &&
                                        !step.directory && isDirectoryOf(*unit, own);
            if (findsDirectory) {
                step.directory = directories.size();
                directories.push_back({{own, {}}, unit});
            }
            const std::string from = own + '/' + unit->fileName();
            const bool goesAlong = step.directory && liesIn(from, directories[*step.directory].from);
            if (unit->is(UnitElement::stub) && !step.directory && below && !isElsewhere) {
                refuse(*unit, "the unit isn't loaded, so the files of the units in it are unknown; load it first");
            }
            std::string directory = isElsewhere
                                        ? std::string(directoryOfPath(normalPath(unit->elsewhere(), base)))
                                        : normalPath(isTop ? target.directory : unit->directorySetting(), base);
            if (isElsewhere && !goesAlong && directory != own) {
                directory = own;
                const Intention::Facts facts{isTop ? target.name : unit->name(), unit->fileName(),
                                             unit->directorySetting(), relativePath(from, base)};
                if (isTop) {
                    facts_.back().second = facts;
                } else {
                    facts_.emplace_back(unit, facts);
                }
            }
            if (findsDirectory) {
                directories.back().to = directory;
            }
            Place &place = places.emplace_back();
            place.from = from;
            place.to = directory + '/' + (isTop ? target.fileName : unit->fileName());
            place.directory = goesAlong ? step.directory : std::nullopt;
            place.unit = unit;
            step.base = bases.size();
            bases.push_back(std::move(directory));
        }
        const auto &children = step.element->children();
        for (auto child = children.rbegin(); below && child != children.rend(); ++child) {
            open.push_back({child->get(), step.base, step.directory});
        }
    }
}

/// Lists the files that move, for the tool and for the plan.
void Relocation::listFiles(const std::vector<Directory> &directories, const std::vector<Place> &places) {
    std::unordered_map<std::size_t, std::size_t> listed; // the index of a directory in the plan
    const auto needs = [this](const std::string &path) {
        std::vector<std::string> missing;
        for (std::string directory(directoryOfPath(path)); !directory.empty() && !isThere(directory);
             directory = directoryOfPath(directory)) {
            missing.push_back(directory);
        }
        plan_.mayBeEmpty.insert(plan_.mayBeEmpty.end(), missing.rbegin(), missing.rend());
    };
    for (const Place &place : places) {
        if (place.from == place.to) {
            continue;
        }
        ChangePlan::File file = place;
        if (place.directory) {
            const Directory &directory = directories[*place.directory];
            if (directory.to + place.from.substr(directory.from.size()) != place.to) {
                files.push_back({&place.unit->unit(), place.from, place.to, false});
            }
            const auto [entry, isNew] = listed.try_emplace(*place.directory, plan_.directories.size());
            if (isNew) {
                files.push_back({&directory.unit->unit(), directory.from, directory.to, true});
                plan_.directories.push_back(directory);
                needs(directory.to);
            }
            file.directory = entry->second;
        } else {
            files.push_back(fileChangeOf(*place.unit, place.from, place.to));
            if (plan_.files.empty() || directoryOfPath(plan_.files.back().to) != directoryOfPath(place.to)) {
                needs(place.to);
            }
        }
        units.push_back(&place.unit->unit());
        if (isThere(file.from) || isThere(file.to)) {
            plan_.files.push_back(std::move(file));
        }
    }
}

void Relocation::checkPlaces(const std::vector<Place> &places) {
    std::unordered_set<const UnitElement *> moving;
    std::unordered_set<std::string> taken;
    for (const Place &place : places) {
        moving.insert(place.unit);
    }
    for (const Place &place : places) {
        if (place.from == place.to) {
            continue;
        }
        const UnitElement *const there = model_->files().byPath(place.to);
        if (there != nullptr && !moving.contains(there)) {
            refuse(*place.unit, "the file " + place.to + " belongs to the unit '" + there->name() + "'");
        } else if (!taken.insert(place.to).second) {
            refuse(*place.unit, "two units would have the file " + place.to);
        } else if (!place.directory && isThere(place.to) && isThere(place.from)) {
            // If only the new one exists, a tool has moved it already.
            refuse(*place.unit, "the file " + place.to + " already exists");
        }
    }
    for (const FileChange &file : files) {
        const UnitElement &unit = *Element::of(file.unit)->asUnit();
        if (file.isDirectory && isThere(file.to) && isThere(file.from)) {
            refuse(unit, "the directory " + file.to + " already exists");
        }
        const std::string renamed =
            std::string(directoryOfPath(file.from)).append(1, '/').append(fileOfPath(file.to));
        if (!file.isDirectory && renamed != file.from && renamed != file.to && isThere(renamed)) {
            refuse(unit, "the file " + renamed + " already exists");
        }
    }
}

/// Determines the texts of the files that list the units, or what is kept elsewhere, and of the units' own files.
/// The former owners come first: a unit that no file lists is less harmful than one that two files list.
void Relocation::planTexts(const std::vector<Place> &places) {
    Intention intention;
    intention.newOwner = newOwner_;
    std::unordered_map<const UnitElement *, ChangePlan::Path> paths;
    for (const Place &place : places) {
        paths.emplace(place.unit, place);
    }
    std::vector<std::pair<UnitElement *, const UnitElement *>> holders; // each with a unit that it lists
    for (const Target &target : targets_) {
        holders.emplace_back(target.unit->owner()->saveUnit(), target.unit);
        if (newOwner_ != nullptr) {
            intention.leaving.emplace(target.unit, 0);
            intention.entering.push_back(target.unit);
        }
    }
    holders.emplace_back(newOwner_ == nullptr ? nullptr : newOwner_->saveUnit(), targets_.front().unit);
    for (const auto &[unit, facts] : facts_) {
        intention.facts.emplace(unit, facts);
        holders.emplace_back(unit->owner()->saveUnit(), unit);
    }
    std::unordered_set<const UnitElement *> seen{nullptr};
    const auto add = [&](UnitElement &unit, bool own) {
        const auto path = paths.find(&unit);
        addText(unit, intention,
                path == paths.end() ? ChangePlan::Path{unit.fullFileName(), unit.fullFileName()} : path->second,
                own);
    };
    for (const auto &[holder, about] : holders) {
        if (!seen.insert(holder).second) {
            continue;
        }
        if (const std::string fault = faultOfSaving(*holder); !fault.empty()) {
            refuse(*about,
                   "the file " + holder->fullFileName() + ", which lists the unit, can't be written: " + fault);
        } else if (problems.empty()) {
            add(*holder, false);
        }
    }
    for (const Target &target : targets_) {
        // It contains its name, which must be written (see planRename), and its owner, which can wait.
        UnitElement &unit = *target.unit;
        if (problems.empty() && unit.isSaveUnit() && seen.insert(&unit).second && faultOfSaving(unit).empty()) {
            add(unit, true);
        }
    }
}

void Relocation::exchangeFacts() {
    for (auto &[unit, other] : facts_) {
        Intention::Facts present{unit->name(), unit->fileName(), unit->directorySetting(), unit->elsewhere()};
        unit->setName(other.name);
        unit->setFileName(other.fileName);
        unit->setDirectorySetting(other.directory);
        if (present.elsewhere != other.elsewhere) {
            unit->setElsewhere(other.elsewhere);
        }
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
}

void Relocation::markChanged() {
    std::vector<Element *> touched;
    for (const FormerOwner &former : formerOwners_) {
        touched.push_back(former.owner);
    }
    for (const auto &[unit, facts] : facts_) {
        touched.push_back(unit->owner());
    }
    for (const Target &target : targets_) {
        const bool written = target.unit->isSaveUnit() && !target.unit->is(UnitElement::stub);
        if (!target.unit->hasFile() || (written && !target.unit->isReadOnly())) {
            touched.push_back(target.unit);
        }
    }
    for (Element *const element : touched) {
        for (Element *const one : {element, static_cast<Element *>(element->saveUnit())}) {
            formerlyModified_.emplace_back(one, one->modified());
        }
        element->changed();
    }
}

void Relocation::apply() {
    model_->changePlaces(topUnits(), [this] {
        enterNewOwner();
        exchangeFacts();
    });
    model_->noteName();
    markChanged();
}

void Relocation::revert() {
    model_->changePlaces(topUnits(), [this] {
        if (newOwner_ != nullptr) {
            returnToOwners();
        }
        exchangeFacts();
    });
    model_->noteName();
    // The first note of an element holds its original state.
    for (auto at = formerlyModified_.rbegin(); at != formerlyModified_.rend(); ++at) {
        at->first->setModified(at->second);
    }
    for (const Target &target : targets_) {
        Workspace::instance().noteChange(target.unit->object());
    }
}

void Relocation::settle(const Decision & /*decision*/, FilesBy by) {
    for (IUnit *const moved : by == FilesBy::tool && !isOpen ? units : std::vector<IUnit *>()) {
        UnitElement &unit = *Element::of(moved)->asUnit();
        unit.updateHeader(true);
        unit.updateMode();
    }
}

} // namespace orchard
