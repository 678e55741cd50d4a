#include "orchard/change/Removal.h"

#include "orchard/model/Paths.h"
#include "orchard/storage/DiskStorage.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/UnitHeader.h"

#include <unordered_map>
#include <unordered_set>

namespace orchard {

Removal::Removal(Model &model, std::vector<UnitElement *> tops) : Work(&model), tops_(std::move(tops)) {
    plan_.removes = true;
    plan_.parts = tops_.size();
    for (std::size_t part = 0; part < tops_.size(); ++part) {
        findFiles(part);
    }
    if (tops_.front()->hasFile()) {
        oldPath = tops_.front()->fullFileName();
    }
    planTexts();
}

/// Finds the files that are removed with the unit. Files of other projects, and those kept outside, are not the
/// unit's to remove.
void Removal::findFiles(std::size_t part) {
    struct Step {
        Element *element;
        bool inDirectory; ///< contents of a listed directory are not listed again
    };
    FileText file;
    std::vector<Step> open{{tops_[part], false}};
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
                plan_.mayBeEmpty.push_back(unit->ownDirectory());
                if (!step.inDirectory && isDirectoryOf(*unit, plan_.mayBeEmpty.back())) {
                    files.push_back({&unit->unit(), plan_.mayBeEmpty.back(), {}, true});
                    step.inDirectory = true;
                }
            }
            if (!step.inDirectory) {
                files.push_back(fileChangeOf(*unit, path, {}));
            }
            units.push_back(&unit->unit());
            if (isThere(path)) {
                plan_.files.push_back({{path, {}}, {}, part});
            }
        }
        const auto &children = step.element->children();
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            open.push_back({child->get(), step.inDirectory});
        }
    }
}

void Removal::planTexts() {
    Intention intention;
    for (std::size_t part = 0; part < tops_.size(); ++part) {
        intention.leaving.emplace(tops_[part], part);
    }
    std::unordered_set<const UnitElement *> seen{nullptr};
    for (const UnitElement *const top : tops_) {
        UnitElement *const holder = top->owner()->saveUnit();
        if (!seen.insert(holder).second) {
            continue;
        }
        if (const std::string fault = faultOfSaving(*holder); !fault.empty()) {
            refuse(*top,
                   "the file " + holder->fullFileName() + ", which lists the unit, can't be written: " + fault);
        } else if (problems.empty()) {
            addText(*holder, intention, {holder->fullFileName(), holder->fullFileName()}, false);
        }
    }
}

void Removal::settle(const Decision &decision, FilesBy /*by*/) {
    std::unordered_map<Element *, std::unordered_set<const Element *>> leaving;
    for (std::size_t part = 0; part < tops_.size(); ++part) {
        if (!decision.parts[part]) {
            continue;
        }
        leaving[tops_[part]->owner()].insert(tops_[part]);
        visitSubtree<Element>(*tops_[part], [this](Element &element) {
            for (ElementId *const active : {&model_->activeComponent, &model_->activeConfiguration}) {
                *active = element.id() == *active ? ElementId() : *active;
            }
            model_->leave(element);
        });
    }
    for (const auto &[owner, those] : leaving) {
        static_cast<void>(owner->takeChildren(those)); // and destroys them
        owner->changed();
    }
    units.clear();
    for (FileChange &file : files) {
        file.unit = nullptr;
    }
}

} // namespace orchard
