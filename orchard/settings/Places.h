// Where the reference host finds what is installed with it and what belongs to the user.
#pragma once

#include "orchard/OrchardApi.h"

#include <filesystem>

namespace orchard {

/// The directory of the installed property sets, headers and samples, "$OQROOT" in a template: what the
/// environment variable ORCHARD_SHARE names, else "share/orchard" beside the directory of the library or program,
/// else the build tree's, else the place it was installed to. Empty if none of them is a directory.
ORCHARD_API std::filesystem::path shareDirectory();

/// The user's configuration directory, "orchard" below XDG_CONFIG_HOME or below ~/.config. It may not exist. Empty
/// without a home directory.
ORCHARD_API std::filesystem::path userDirectory();

} // namespace orchard
