// The CM tools for which property sets are installed.
#pragma once

#include <string>
#include <vector>

namespace orchard_cm {

struct ToolFacts {
    std::string name;
    std::string description; ///< one line
    std::string file;        ///< the property set
};

/// In the order in which the sets count.
std::vector<ToolFacts> installedTools();

/// The tool's name as its property set spells it, found without regard to case; "None" stands for no tool. Throws
/// a Failure with similar names where no such set is installed.
std::string installedToolNamed(const std::string &name);

} // namespace orchard_cm
