// Finds units by their files: by full path, and by bare file name.
#pragma once

#include "orchard/model/UnitElement.h"

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orchard {

class FileIndex {
  public:
    /// Adds a unit under its current file. If another unit already has that file, returns that unit and adds
    /// nothing; otherwise returns null.
    UnitElement *add(UnitElement &unit);
    /// Removes the unit; its file must still be the one it was added with.
    void remove(UnitElement &unit);

    /// By normal full path, or null.
    [[nodiscard]] UnitElement *byPath(std::string_view path) const;
    /// By file name without directory; null if no unit or more than one has it.
    [[nodiscard]] UnitElement *byUniqueName(std::string_view name) const;
    /// All units with this file name, in no particular order.
    [[nodiscard]] std::vector<UnitElement *> byName(std::string_view name) const;

  private:
    using Names = std::set<std::pair<std::string, UnitElement *>>;
    [[nodiscard]] const Names &names() const;

    /// Keyed by the hash of the path: storing the paths of a large model would take more memory than the rest of
    /// the index.
    std::unordered_multimap<std::size_t, UnitElement *> paths_;
    /// Built on first use, because opening and listing a model don't need it.
    mutable Names names_;
    mutable bool namesValid_ = false;
};

} // namespace orchard
