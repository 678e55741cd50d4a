// Updates the model after an operation that leaves this to its caller, such as a recursive check out.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

namespace orchard_cm {

/// The requested files, except embedded ones.
struct ReloadedFiles {
    std::unordered_set<std::string> read;
    std::unordered_set<std::string> failed; ///< their units keep their previous contents
};

/// Reloads the units of these files, owners first. A file that the model does not contain is loaded into it.
/// Embedded files are ignored. Calls the facade's callbacks before and after.
ReloadedFiles reloadFiles(const std::vector<std::string> &files);

} // namespace orchard_cm
