// Returns the user's directories for configuration and cache.
#pragma once

#include "orchard/OrchardApi.h"

#include <filesystem>

namespace orchard {

/// The user's configuration directory, "orchard" below XDG_CONFIG_HOME or below ~/.config. It may not exist. Empty
/// without a home directory.
ORCHARD_API std::filesystem::path userDirectory();

/// The cache directory, whose contents can be recreated at any time, "orchard" below XDG_CACHE_HOME or below
/// ~/.cache. It may not exist. Empty without a home directory.
ORCHARD_API std::filesystem::path cacheDirectory();

} // namespace orchard
