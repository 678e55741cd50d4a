#include "orchard/base/UserDirectories.h"

#include <cstdlib>

namespace orchard {
namespace fs = std::filesystem;
namespace {

fs::path fromEnvironment(const char *name) {
    const char *const value = std::getenv(name);
    return value == nullptr ? fs::path() : fs::path(value);
}

/// The user's directory for one purpose, as the XDG base directories have it: relative names don't
/// count.
fs::path belowHome(const char *variable, const char *usual) {
    if (const fs::path named = fromEnvironment(variable); named.is_absolute()) {
        return named / "orchard";
    }
    const fs::path home = fromEnvironment("HOME");
    return home.empty() ? fs::path() : home / usual / "orchard";
}

} // namespace

fs::path userDirectory() { return belowHome("XDG_CONFIG_HOME", ".config"); }

fs::path cacheDirectory() { return belowHome("XDG_CACHE_HOME", ".cache"); }

} // namespace orchard
