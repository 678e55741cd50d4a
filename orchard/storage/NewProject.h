// Creates projects: a small sample, and large ones for experiments.
#pragma once

#include "orchard/OrchardApi.h"

#include <cstddef>
#include <string>

namespace orchard {

struct NewProject {
    std::string projectFile; ///< full path; empty on failure
    std::string error;       ///< in words for the user
    explicit operator bool() const { return error.empty(); }
};

/// Both can be repeated after a crash: what an interrupted call has left is replaced. Both take DIR/NAME or
/// DIR/NAME.orp (DIR is created if needed) and refuse to overwrite an existing project. If a CM tool is given, it
/// is set on the project, and its default header is at the top of every unit file. The project is written, but not
/// opened.

/// A pump-station controller: subsystems, one of them with a directory of its own, classes, a component with two
/// configurations and code files, and an embedded text file.
[[nodiscard]] ORCHARD_API NewProject createSampleProject(const std::string &path, const std::string &tool = {});

/// `units` units with files of their own, besides the project, in nested subsystems. The same number yields the
/// same model, byte for byte, in any directory.
[[nodiscard]] ORCHARD_API NewProject createGeneratedProject(const std::string &path, std::size_t units,
                                                            const std::string &tool = {});

} // namespace orchard
