// Finds the CM tools for which property sets are installed.
#pragma once

#include <string>
#include <vector>

namespace orchard_cm {

struct ToolFacts {
    std::string name;
    std::string description;        ///< one line
    std::vector<std::string> files; ///< its property sets, the one with the highest priority first
};

/// Returns the tools in the priority of their sets, each tool once.
std::vector<ToolFacts> installedTools();

/// Returns the name of the tool that the active project uses; empty if there is none.
std::string toolInUse();

/// Returns the tool's name in the spelling of its property set, found regardless of case; "None" means no tool.
/// Throws a Failure with similar names if no such set is installed.
std::string installedToolNamed(const std::string &name);

} // namespace orchard_cm
