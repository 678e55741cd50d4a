// Determines where the registry file is looked for.
#pragma once

#include "CM/platform/CString.h"

#include <vector>

namespace platform {

struct RegistryPlaces {
    /// The candidates; the first one that exists is used.
    std::vector<CString> files;
    /// Whether the user has named the file, so that no other file is used if it is missing.
    bool isBinding = false;
};

/// Returns the places for the current user's environment.
RegistryPlaces registryPlaces();

} // namespace platform
