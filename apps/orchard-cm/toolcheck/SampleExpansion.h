// Expands the commands of a tool for a sample unit. Nothing is run.
#pragma once

#include "apps/orchard-cm/toolcheck/SetCheck.h"

#include <string>
#include <vector>

namespace orchard_cm {

struct Expanded {
    std::string key;
    std::string command; ///< as far as it could be expanded
    bool isFull = false; ///< with a label, a comment and an archive, not only with what is required
};

struct SampleExpansions {
    std::vector<Expanded> commands;
    std::vector<Finding> findings;
};

/// Creates a sample project for the tool in a temporary directory, opens it until the function returns, and
/// expands every command of the set for it. Throws a Failure if the project can't be created.
SampleExpansions expandForSample(const std::string &tool, const std::vector<SetEntry> &entries);

} // namespace orchard_cm
