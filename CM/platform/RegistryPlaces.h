// Where the registry file of a machine is looked for.
#pragma once

#include "CM/platform/CString.h"

#include <vector>

namespace platform {

struct RegistryPlaces {
    /// The first that exists counts.
    std::vector<CString> files;
    /// The one file was named by the user; if it is missing, no other takes its place.
    bool isBinding = false;
};

/// The places that this user's environment gives.
RegistryPlaces registryPlaces();

} // namespace platform
