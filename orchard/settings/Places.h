// Finds what is installed with the reference host.
#pragma once

#include "orchard/OrchardApi.h"

#include <filesystem>

namespace orchard {

/// Returns the directory of the installed property sets, headers and samples, "$OQROOT" in a template. The
/// environment variable ORCHARD_SHARE names it, relative to the current directory at the first call; a name that
/// is not a directory is reported once. Without the variable: "share/orchard" below one of the three directories
/// above the library or program, or else the configured installation directory. Empty if none of these contains
/// property sets.
ORCHARD_API std::filesystem::path shareDirectory();

} // namespace orchard
