// Finds what is installed with the reference host.
#pragma once

#include "orchard/OrchardApi.h"

#include <filesystem>

namespace orchard {

/// Returns the directory of the installed property sets, headers and samples, "$OQROOT" in a template. The
/// environment variable ORCHARD_SHARE names it, relative to the current directory at the first call; a name that
/// is not a directory is reported once. Without such a directory it is "share/orchard" beside the directory of the
/// library or program, in a build tree as in an installation; else the planned place of installation. Empty if
/// none of these is a directory.
ORCHARD_API std::filesystem::path shareDirectory();

} // namespace orchard
