// Finds units by their files: by full path, and by bare file name.
#pragma once

#include "orchard/model/HashTable.h"
#include "orchard/model/UnitElement.h"

#include <cstdint>
#include <string_view>
#include <unordered_map>

namespace orchard {

class FileIndex {
  public:
    /// Adds a unit with its present file. If another unit has the file already, that one is returned and nothing
    /// is added; else null.
    UnitElement *add(UnitElement &unit);
    void remove(UnitElement &unit);

    /// By normal full path, or null.
    [[nodiscard]] UnitElement *byPath(std::string_view path) const;
    /// By file name without directory; null if no unit or more than one has it.
    [[nodiscard]] UnitElement *byUniqueName(std::string_view name) const;
    /// All units with this file name, in no particular order.
    [[nodiscard]] std::vector<UnitElement *> byName(std::string_view name) const;

  private:
    void chainByName(UnitElement &unit) const;
    [[nodiscard]] UnitElement *firstOfName(std::string_view name) const;
    [[nodiscard]] UnitElement *find(std::uint64_t hash, std::string_view path) const;

    HashTable<UnitElement> paths_;
    // The units of one name form a chain through the units themselves, so that coming and going costs the same
    // however many units share a file name. Made when it is asked for: opening a model and listing it need none.
    mutable std::unordered_map<std::uint64_t, UnitElement *> names_;
    mutable bool namesStand_ = false;
};

} // namespace orchard
