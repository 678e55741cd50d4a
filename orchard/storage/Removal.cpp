#include "orchard/storage/Removal.h"

#include "orchard/model/Paths.h"
#include "orchard/storage/DiskStorage.h"
#include "orchard/storage/FileMoves.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/UnitHeader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>
#include <unordered_map>
#include <unordered_set>

namespace orchard {

Removal::Removal(Model &model, std::vector<UnitElement *> tops) : model_(model), tops_(std::move(tops)) {
    stays_.assign(tops_.size(), false);
    for (std::size_t top = 0; top < tops_.size(); ++top) {
        findFiles(top);
    }
    if (tops_.front()->hasFile()) {
        oldPath = tops_.front()->fullFileName();
    }
    checkOwners();
}

/// Finds the files that are removed with the unit. Files of other projects, and those kept outside, are not the
/// unit's to remove.
void Removal::findFiles(std::size_t top) {
    struct Step {
        Element *element;
        bool inDirectory; ///< contents of a listed directory are not listed again
    };
    FileText file;
    std::vector<Step> open{{tops_[top], false}};
    while (!open.empty()) {
        Step step = open.back();
        open.pop_back();
        UnitElement *const unit = step.element->asUnit();
        if (unit != nullptr && (unit->is(UnitElement::reference) || unit->is(UnitElement::external))) {
            continue;
        }
        if (unit != nullptr && unit->hasFile()) {
            const std::string path = unit->fullFileName();
            const bool readable = unit->isSaveUnit() && file.read(path) == FileRead::done;
            if (readable && unit->is(UnitElement::stub)) {
                refuse(*unit, "the unit isn't loaded, so the files of the units in it are unknown; load it first");
            } else if (readable && unit->bodyHash() != 0 && bodyHashOf(file.text) != unit->bodyHash()) {
                refuse(*unit, "its file " + path + " was changed by another program; reload the unit first");
            }
            if (!unit->directorySetting().empty()) {
                directories_.push_back(unit->ownDirectory());
                if (!step.inDirectory && isDirectoryOf(*unit, directories_.back())) {
                    files.push_back({&unit->unit(), directories_.back(), {}, true});
                    step.inDirectory = true;
                }
            }
            if (!step.inDirectory) {
                files.push_back(fileChangeOf(*unit, path, {}));
            }
            units.push_back(&unit->unit());
            found_.push_back({unit, path, top});
        }
        const auto &children = step.element->children();
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            open.push_back({child->get(), step.inDirectory});
        }
    }
}

void Removal::checkOwners() {
    std::unordered_set<const UnitElement *> seen;
    for (const UnitElement *const top : tops_) {
        const UnitElement *const holder = top->owner()->saveUnit();
        if (holder == nullptr || !seen.insert(holder).second) {
            continue;
        }
        if (const std::string fault = faultOfSaving(*holder); !fault.empty()) {
            refuse(*top,
                   "the file " + holder->fullFileName() + ", which lists the unit, can't be written: " + fault);
        }
    }
}

/// Keeps units if a tool was to remove their files but removed none of them.
void Removal::leaveOutUntouched(Problems &told) {
    std::vector<const File *> left(tops_.size(), nullptr);
    std::vector<bool> touched(tops_.size(), false);
    for (const File &file : found_) {
        if (!isThere(file.path)) {
            touched[file.top] = true;
        } else if (left[file.top] == nullptr) {
            left[file.top] = &file;
        }
    }
    for (std::size_t top = 0; top < tops_.size(); ++top) {
        if (left[top] == nullptr) {
            continue;
        }
        stays_[top] = !touched[top];
        told.push_back({left[top]->path, 0, 0,
                        touched[top] ? "the CM tool has left the file behind; it was removed without the tool"
                                     : "the CM tool has not removed the file; the unit '" + tops_[top]->name() +
                                           "' stays in the model"});
    }
}

/// Removes the units from the model and saves the files that named them. If the first of these can't be written,
/// puts the units back and returns false.
bool Removal::takeOut(Problems &told) {
    std::unordered_map<Element *, std::unordered_set<const Element *>> leaving;
    std::vector<Element *> left;
    for (std::size_t top = 0; top < tops_.size(); ++top) {
        if (stays_[top]) {
            continue;
        }
        Element *const owner = tops_[top]->owner();
        auto &those = leaving[owner];
        if (those.empty()) {
            left.push_back(owner);
        }
        those.insert(tops_[top]);
        model_.leaveSubtree(*tops_[top]);
    }
    bool first = true;
    for (Element *const owner : left) {
        std::vector<Element::Placed> placed = owner->takeChildren(leaving[owner]);
        UnitElement *const holder = owner->saveUnit();
        const bool wasModified = holder->modified();
        const bool ownerWasModified = owner->modified();
        owner->changed();
        if (!saveOwnFile(*holder, told) && first) {
            owner->putChildren(std::move(placed));
            owner->setModified(ownerWasModified);
            holder->setModified(wasModified);
            for (std::size_t top = 0; top < tops_.size(); ++top) {
                if (!stays_[top]) {
                    model_.enterSubtree(*tops_[top]);
                }
            }
            return false;
        }
        first = false;
        for (Element::Placed &one : placed) {
            gone_.push_back(std::move(one.element));
        }
    }
    return true;
}

void Removal::removeFiles(Problems &told) const {
    for (const File &file : found_) {
        if (!stays_[file.top] && ::unlink(file.path.c_str()) != 0 && errno != ENOENT && errno != ENOTDIR) {
            told.push_back({file.path, 0, 0,
                            std::string("the file can't be removed: ") + std::strerror(errno) +
                                "; no unit of the model uses it any more"});
        }
    }
    // A directory stays if it contains files that the model doesn't know.
    for (auto directory = directories_.rbegin(); directory != directories_.rend(); ++directory) {
        static_cast<void>(::rmdir(directory->c_str()));
    }
}

Problems Removal::finish(FilesBy by) {
    Problems told;
    if (!problems.empty() || phase_ == Phase::over) {
        return told;
    }
    phase_ = Phase::over;
    if (by == FilesBy::tool) {
        leaveOutUntouched(told);
    }
    if (std::ranges::all_of(stays_, [](bool stays) { return stays; })) {
        return told;
    }
    if (!takeOut(told)) {
        return told;
    }
    removeFiles(told);
    const auto isGone = [this](const ElementId &id) { return !id.empty() && model_.find(id) == nullptr; };
    if (isGone(model_.activeComponent)) {
        model_.activeComponent = {};
    }
    if (isGone(model_.activeConfiguration)) {
        model_.activeConfiguration = {};
    }
    stands = std::ranges::none_of(stays_, [](bool stays) { return stays; });
    units.clear();
    for (FileChange &file : files) {
        file.unit = nullptr;
    }
    gone_.clear();
    return told;
}

} // namespace orchard
