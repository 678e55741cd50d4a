// Writes the text of a unit file, one item per line; the same unit always yields the same text.
#pragma once

#include "orchard/model/UnitElement.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orchard {

/// Lines of a text that are left out once a part of a change is done.
struct Cut {
    std::size_t part;
    std::size_t begin; ///< offset in the text
    std::size_t end;
};

/// What is to become of elements. A unit can be written as it will be, while the model stays as it is.
struct Intention {
    struct Facts {
        std::string name;
        std::string fileName;
        std::string directory;
        std::string elsewhere;
    };
    std::unordered_map<const Element *, Facts> facts;
    /// Elements that leave their owners, each with the part of the change in which it does.
    std::unordered_map<const Element *, std::size_t> leaving;
    const Element *newOwner = nullptr; ///< of the entering elements; null if they are removed
    std::vector<const Element *> entering;
};

/// Returns true with the complete file in `text`, or false with `fault` naming what can't be written.
[[nodiscard]] bool writeUnit(const UnitElement &unit, std::string_view header, std::string &text,
                             std::string &fault);
/// Returns the same as the unit will be. The text contains the leaving elements; `cuts` receives where.
[[nodiscard]] bool writeUnit(const UnitElement &unit, std::string_view header, const Intention &intention,
                             std::string &text, std::vector<Cut> &cuts, std::string &fault);

/// Returns `text`, a complete unit file, with the header of the unit file `other`, unless that has none.
[[nodiscard]] std::string withHeaderOf(std::string_view other, std::string_view text);

} // namespace orchard
