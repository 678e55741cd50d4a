// The CM tools for which property sets are installed.
#pragma once

#include <string>
#include <vector>

namespace orchard_cm {

struct ToolFacts {
    std::string name;
    std::string description;        ///< one line
    std::vector<std::string> files; ///< its property sets, the one that counts first at the front
};

/// In the order in which the sets count, each tool once.
std::vector<ToolFacts> installedTools();

/// The name of the tool that the active project uses; empty without one.
std::string toolInUse();

/// The tool's name as its property set spells it, found without regard to case; "None" stands for no tool. Throws
/// a Failure with similar names where no such set is installed.
std::string installedToolNamed(const std::string &name);

} // namespace orchard_cm
