// SampleExpansion: the commands of a tool as they would be run for a sample unit. Nothing is run.
#pragma once

#include "apps/orchard-cm/toolcheck/SetCheck.h"

#include <string>
#include <vector>

namespace orchard_cm {

struct Expanded {
    std::string key;
    std::string command; ///< as far as it could be expanded
    bool isFull = false; ///< whether with a label, a comment and an archive, or with the least that there may be
};

struct SampleExpansions {
    std::vector<Expanded> commands;
    std::vector<Finding> findings;
};

/// Makes a sample project for the tool in a temporary directory, opens it for as long as it takes, and expands
/// every command of the set for it. Throws a Failure where there can be no such project.
SampleExpansions expandForSample(const std::string &tool, const std::vector<SetEntry> &entries);

} // namespace orchard_cm
