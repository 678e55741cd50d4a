// Making projects: a small sample, and large ones for trying out.
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

/// Both take DIR/NAME or DIR/NAME.orp (DIR is made if need be) and refuse to write over an existing project. The
/// CM tool, if one is given, is set on the project, and its default header stands at the top of every unit file.
/// The project is written, not opened.

/// A pump-station controller: subsystems, one of them with a directory of its own, classes, a component with two
/// configurations and code files, an embedded text file.
[[nodiscard]] ORCHARD_API NewProject createSampleProject(const std::string &path, const std::string &tool = {});

/// `units` units with files of their own, besides the project, in nested subsystems. The same number gives the
/// same model, byte for byte, whatever the directory.
[[nodiscard]] ORCHARD_API NewProject createGeneratedProject(const std::string &path, std::size_t units,
                                                            const std::string &tool = {});

} // namespace orchard
