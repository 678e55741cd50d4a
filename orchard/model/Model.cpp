#include "orchard/model/Model.h"

#include "orchard/model/Paths.h"

#include <algorithm>

namespace orchard {

Model::Model(std::string projectFile, std::string unitsDirectory, std::unique_ptr<UnitStorage> storage)
    : projectFile_(std::move(projectFile)), projectDirectory_(directoryOfPath(projectFile_)),
      unitsDirectory_(std::move(unitsDirectory)), storage_(std::move(storage)),
      project_(makeElement(Kind::project).release()->asUnit()) {
    project_->setModel(this);
}

Model::~Model() = default;

Model::Clash Model::enter(Element &element) {
    Clash clash;
    if (const auto [place, isNew] = ids_.try_emplace(element.id(), &element); !isNew) {
        clash.sameId = place->second;
        return clash;
    }
    element.setModel(this);
    namesValid_ = namesValid_ && element.asUnit() == nullptr; // names_ holds only units
    if (UnitElement *const unit = element.asUnit(); unit != nullptr && unit->hasFile()) {
        clash.sameFile = files_.add(*unit);
        if (clash) {
            ids_.erase(element.id());
            return clash;
        }
        repositoryFilesValid_ = false;
    }
    if (element.kind() == Kind::fragment) {
        fragments_.emplace(element.standsFor(), &element);
    }
    slots_.entered(element);
    return clash;
}

void Model::leave(Element &element) {
    slots_.left(element);
    namesValid_ = namesValid_ && element.asUnit() == nullptr; // names_ holds only units
    if (const auto found = ids_.find(element.id()); found != ids_.end() && found->second == &element) {
        ids_.erase(found);
    }
    if (UnitElement *const unit = element.asUnit(); unit != nullptr && unit->hasFile()) {
        files_.remove(*unit);
        repositoryFilesValid_ = false;
    }
    if (element.kind() == Kind::fragment) {
        fragments_.erase({element.standsFor(), &element});
    }
}

Element *Model::find(const ElementId &id) const {
    const auto found = ids_.find(id);
    return found == ids_.end() ? nullptr : found->second;
}

void Model::enterSubtree(Element &root) {
    visitSubtree(root, [this](Element &element) { enter(element); });
}

void Model::leaveSubtree(Element &root) {
    visitSubtree(root, [this](Element &element) { leave(element); });
}

void Model::takePlaces(UnitElement &root, bool in) {
    repositoryFilesValid_ = false;
    visitSubtree<Element>(root, [&](Element &element) {
        if (UnitElement *const unit = element.asUnit(); unit != nullptr && unit->hasFile()) {
            if (in) {
                files_.add(*unit);
            } else {
                files_.remove(*unit);
            }
        }
    });
}

UnitElement *Model::findByFile(std::string_view path) const {
    if (path.empty()) {
        return nullptr;
    }
    if (!hasSeparator(path)) {
        if (UnitElement *const unit = files_.byUniqueName(path)) {
            return unit;
        }
    }
    return files_.byPath(normalPath(path, unitsDirectory_));
}

std::vector<UnitElement *> Model::unitsNamed(std::string_view name) const {
    if (!namesValid_) {
        names_.clear();
        visitSubtree<Element>(*project_, [this](Element &element) {
            if (UnitElement *const unit = element.asUnit()) {
                names_.emplace_back(std::hash<std::string_view>()(unit->name()), unit);
            }
        });
        std::stable_sort(names_.begin(), names_.end(),
                         [](const auto &one, const auto &other) { return one.first < other.first; });
        namesValid_ = true;
    }
    std::vector<UnitElement *> units;
    const std::size_t hash = std::hash<std::string_view>()(name);
    auto at = std::lower_bound(names_.begin(), names_.end(), hash,
                               [](const auto &entry, std::size_t wanted) { return entry.first < wanted; });
    for (; at != names_.end() && at->first == hash; ++at) {
        if (at->second->name() == name) {
            units.push_back(at->second);
        }
    }
    return units;
}

IObjectList &Model::repositoryFiles() {
    if (!repositoryFilesValid_) {
        repositoryFiles_.RemoveAll();
        visitSubtree<Element>(*project_, [this](Element &element) {
            if (const UnitElement *const unit = element.asUnit(); unit != nullptr && unit->hasFile()) {
                repositoryFiles_.AddTail(&element.object());
            }
        });
        repositoryFilesValid_ = true;
    }
    return repositoryFiles_;
}

std::vector<UnitElement *> Model::filesObserving(const ElementId &element) const {
    std::vector<UnitElement *> files;
    for (auto at = fragments_.lower_bound({element, nullptr}); at != fragments_.end() && at->first == element;
         ++at) {
        Element *outer = at->second;
        while (outer != nullptr && outer->kind() != Kind::file) {
            outer = outer->owner();
        }
        if (outer != nullptr) {
            files.push_back(outer->asUnit());
        }
    }
    std::ranges::sort(files);
    files.erase(std::unique(files.begin(), files.end()), files.end());
    std::ranges::sort(files, {}, [](const UnitElement *file) { return file->fullFileName(); });
    return files;
}

UnitElement *Model::component() const {
    Element *const element = find(activeComponent);
    return element != nullptr && element->kind() == Kind::component ? element->asUnit() : nullptr;
}

Element *Model::configurationOf(const UnitElement &component) const {
    Element *first = nullptr;
    for (const auto &child : component.children()) {
        if (child->kind() == Kind::configuration) {
            if (child->id() == activeConfiguration) {
                return child.get();
            }
            first = first == nullptr ? child.get() : first;
        }
    }
    return first;
}

} // namespace orchard
