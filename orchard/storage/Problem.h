// Describes a problem with a file and the place where it is.
#pragma once

#include "orchard/OrchardApi.h"

#include <string>
#include <vector>

namespace orchard {

struct ORCHARD_API Problem {
    std::string file; ///< full path
    int line = 0;     ///< from 1; 0 if the problem has no place
    int column = 0;   ///< in bytes, from 1
    std::string text; ///< what is wrong and what was expected

    /// "FILE:LINE:COLUMN: TEXT", without the numbers where there are none.
    [[nodiscard]] std::string message() const;
};

using Problems = std::vector<Problem>;

} // namespace orchard
