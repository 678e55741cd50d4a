// Bringing the model into line after an operation that leaves it to its caller, such as a recursive check out.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

namespace orchard_cm {

/// Reloads the units of these files, owners first; a file that the model does not know comes into it. Embedded
/// files are left alone. The host is told of the begin and the end through the facade's callbacks. Gives back the
/// files that could not be read; their units hold what they held.
std::unordered_set<std::string> reloadFiles(const std::vector<std::string> &files);

} // namespace orchard_cm
