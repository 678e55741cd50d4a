#include "CM/platform/RegistryPlaces.h"

#include <cstdlib>

namespace platform {

namespace {

CString environmentText(const char *name) { return {std::getenv(name)}; }

} // namespace

RegistryPlaces registryPlaces() {
    if (const CString named = environmentText("ORCHARD_REGISTRY"); !named.IsEmpty()) {
        return {{named}, true};
    }
    RegistryPlaces places;
    const CString home = environmentText("HOME");
    if (const CString configuration = environmentText("XDG_CONFIG_HOME"); configuration.GetAt(0) == '/') {
        places.files.push_back(configuration + "/orchard/registry.reg"); // a relative one is ignored
    } else if (!home.IsEmpty()) {
        places.files.push_back(home + "/.config/orchard/registry.reg");
    }
    places.files.emplace_back("/etc/orchard/registry.reg");
    return places;
}

} // namespace platform
