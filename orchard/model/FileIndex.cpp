#include "orchard/model/FileIndex.h"

namespace orchard {

namespace {

std::uint64_t hashOf(std::string_view text) { return std::hash<std::string_view>()(text); }

} // namespace

UnitElement *FileIndex::add(UnitElement &unit) {
    const std::string path = unit.fullFileName();
    const std::uint64_t hash = hashOf(path);
    if (UnitElement *const there = find(hash, path)) {
        return there;
    }
    unit.pathHash = hash;
    paths_.add(hash, unit);
    if (namesStand_) {
        chainByName(unit);
    }
    return nullptr;
}

void FileIndex::chainByName(UnitElement &unit) const {
    UnitElement *&first = names_[hashOf(unit.fileName())];
    unit.previousOfName = nullptr;
    unit.nextOfName = first;
    if (first != nullptr) {
        first->previousOfName = &unit;
    }
    first = &unit;
}

UnitElement *FileIndex::firstOfName(std::string_view name) const {
    if (!namesStand_) {
        names_.reserve(paths_.size());
        paths_.forEach([this](UnitElement &unit) { chainByName(unit); });
        namesStand_ = true;
    }
    const auto chain = names_.find(hashOf(name));
    return chain == names_.end() ? nullptr : chain->second;
}

void FileIndex::remove(UnitElement &unit) {
    if (!paths_.remove(unit.pathHash, unit) || !namesStand_) {
        return;
    }
    if (unit.nextOfName != nullptr) {
        unit.nextOfName->previousOfName = unit.previousOfName;
    }
    if (unit.previousOfName != nullptr) {
        unit.previousOfName->nextOfName = unit.nextOfName;
    } else {
        const auto chain = names_.find(hashOf(unit.fileName()));
        if (unit.nextOfName != nullptr) {
            chain->second = unit.nextOfName;
        } else {
            names_.erase(chain);
        }
    }
    unit.nextOfName = nullptr;
    unit.previousOfName = nullptr;
}

UnitElement *FileIndex::find(std::uint64_t hash, std::string_view path) const {
    return paths_.find(hash, [path](const UnitElement &unit) { return unit.fullFileName() == path; });
}

UnitElement *FileIndex::byPath(std::string_view path) const { return find(hashOf(path), path); }

UnitElement *FileIndex::byUniqueName(std::string_view name) const {
    UnitElement *found = nullptr;
    for (UnitElement *unit = firstOfName(name); unit != nullptr; unit = unit->nextOfName) {
        if (unit->fileName() == name) {
            if (found != nullptr) {
                return nullptr;
            }
            found = unit;
        }
    }
    return found;
}

std::vector<UnitElement *> FileIndex::byName(std::string_view name) const {
    std::vector<UnitElement *> found;
    for (UnitElement *unit = firstOfName(name); unit != nullptr; unit = unit->nextOfName) {
        if (unit->fileName() == name) {
            found.push_back(unit);
        }
    }
    return found;
}

} // namespace orchard
