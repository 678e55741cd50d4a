#include "orchard/model/FileIndex.h"

#include <algorithm>
#include <iterator>

namespace orchard {

namespace {

std::size_t hashOf(std::string_view path) { return std::hash<std::string_view>()(path); }

} // namespace

UnitElement *FileIndex::add(UnitElement &unit) {
    const std::string path = unit.fullFileName();
    if (UnitElement *const there = byPath(path)) {
        return there;
    }
    paths_.emplace(hashOf(path), &unit);
    if (namesValid_) {
        names_.emplace(unit.fileName(), &unit);
    }
    return nullptr;
}

void FileIndex::remove(UnitElement &unit) {
    const auto [first, last] = paths_.equal_range(hashOf(unit.fullFileName()));
    const auto found = std::find_if(first, last, [&](const auto &entry) { return entry.second == &unit; });
    if (found != last) {
        paths_.erase(found);
        names_.erase({unit.fileName(), &unit});
    }
}

UnitElement *FileIndex::byPath(std::string_view path) const {
    const auto [first, last] = paths_.equal_range(hashOf(path));
    const auto found =
        std::find_if(first, last, [path](const auto &entry) { return entry.second->fullFileName() == path; });
    return found == last ? nullptr : found->second;
}

const FileIndex::Names &FileIndex::names() const {
    if (!namesValid_) {
        for (const auto &[hash, unit] : paths_) {
            names_.emplace(unit->fileName(), unit);
        }
        namesValid_ = true;
    }
    return names_;
}

UnitElement *FileIndex::byUniqueName(std::string_view name) const {
    const Names &all = names();
    const auto first = all.lower_bound({std::string(name), nullptr});
    if (first == all.end() || first->first != name) {
        return nullptr;
    }
    const auto second = std::next(first);
    return second != all.end() && second->first == name ? nullptr : first->second;
}

std::vector<UnitElement *> FileIndex::byName(std::string_view name) const {
    std::vector<UnitElement *> found;
    const Names &all = names();
    for (auto at = all.lower_bound({std::string(name), nullptr}); at != all.end() && at->first == name; ++at) {
        found.push_back(at->second);
    }
    return found;
}

} // namespace orchard
