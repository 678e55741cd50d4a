// Where the reference host finds what is installed with it and what belongs to the user.
#pragma once

#include "orchard/OrchardApi.h"

#include <filesystem>

namespace orchard {

/// The directory of the installed property sets, headers and samples, "$OQROOT" in a template: what the
/// environment variable ORCHARD_SHARE names, a relative name being seen from what was the current directory at the
/// first call, and a name of no directory being told once; else "share/orchard" beside the directory of the
/// library or program, in a build tree as in an installation; else the place that it was to be installed to. Empty
/// if none of these is a directory.
ORCHARD_API std::filesystem::path shareDirectory();

/// The user's configuration directory, "orchard" below XDG_CONFIG_HOME or below ~/.config. It may not exist. Empty
/// without a home directory.
ORCHARD_API std::filesystem::path userDirectory();

/// The directory of what can be made anew at any time, "orchard" below XDG_CACHE_HOME or below ~/.cache. It may
/// not exist. Empty without a home directory.
ORCHARD_API std::filesystem::path cacheDirectory();

} // namespace orchard
