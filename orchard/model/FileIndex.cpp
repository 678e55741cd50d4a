#include "orchard/model/FileIndex.h"

#include <algorithm>

namespace orchard {

namespace {

std::uint64_t hashOf(std::string_view text) { return std::hash<std::string_view>()(text); }

} // namespace

UnitElement *FileIndex::add(UnitElement &unit) {
    const std::string path = unit.fullFileName();
    if (UnitElement *const there = byPath(path)) {
        return there;
    }
    unit.pathHash = hashOf(path);
    paths_.emplace(unit.pathHash, &unit);
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
        for (const auto &entry : paths_) {
            chainByName(*entry.second);
        }
        namesStand_ = true;
    }
    const auto chain = names_.find(hashOf(name));
    return chain == names_.end() ? nullptr : chain->second;
}

void FileIndex::remove(UnitElement &unit) {
    const auto [from, to] = paths_.equal_range(unit.pathHash);
    const auto found = std::find_if(from, to, [&](const auto &entry) { return entry.second == &unit; });
    if (found == to) {
        return;
    }
    paths_.erase(found);
    if (!namesStand_) {
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

UnitElement *FileIndex::byPath(std::string_view path) const {
    const auto [from, to] = paths_.equal_range(hashOf(path));
    const auto found =
        std::find_if(from, to, [&](const auto &entry) { return entry.second->fullFileName() == path; });
    return found == to ? nullptr : found->second;
}

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
