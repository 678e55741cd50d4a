#include "orchard/settings/Places.h"

#include "CM/host/LogTrace.h"
#include "CM/host/Messages.h"

#include <cstdlib>
#include <dlfcn.h>
#include <map>
#include <mutex>
#include <string>
#include <system_error>
#include <vector>

namespace orchard {
namespace fs = std::filesystem;
namespace {

fs::path fromEnvironment(const char *name) {
    const char *const value = std::getenv(name);
    return value == nullptr ? fs::path() : fs::path(value);
}

/// The directory of the library or program that holds this code.
fs::path directoryOfThisCode() {
    Dl_info info{};
    std::error_code error;
    if (dladdr(reinterpret_cast<void *>(&directoryOfThisCode), &info) == 0 || info.dli_fname == nullptr) {
        return {};
    }
    const fs::path file = fs::weakly_canonical(info.dli_fname, error);
    return error ? fs::path() : file.parent_path();
}

/// What ORCHARD_SHARE names, seen from the directory that was the current one when the name was first met. A name
/// of nothing is told then.
fs::path namedShare(const fs::path &name) {
    static std::mutex guard;
    static std::map<std::string, fs::path> known;
    fs::path place;
    {
        const std::lock_guard lock(guard);
        const auto [at, isNew] = known.try_emplace(name.string());
        if (!isNew) {
            return at->second;
        }
        std::error_code error;
        place = fs::absolute(name, error).lexically_normal();
        at->second = place = error ? name : place;
        if (fs::is_directory(place, error)) {
            return place;
        }
    }
    // Outside the lock, as telling may come back here.
    const std::string text = "ORCHARD_SHARE names " + place.string() + ", which is not a directory.";
    LogTrace::Log(LogTrace::Log::cm).Min("orchard/settings", 0, text);
    static_cast<void>(notifyUserAndAsk(text, MB_ICONEXCLAMATION, 0, messageLevelDefault));
    return place;
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

fs::path shareDirectory() {
    if (const fs::path named = fromEnvironment("ORCHARD_SHARE"); !named.empty()) {
        return namedShare(named);
    }
    std::vector<fs::path> candidates;
    // A library may stand two levels below the prefix, as in lib/x86_64-linux-gnu.
    fs::path at = directoryOfThisCode();
    for (int level = 0; level < 3 && at.has_relative_path(); ++level) {
        at = at.parent_path();
        candidates.push_back(at / "share" / "orchard");
    }
    candidates.emplace_back(ORCHARD_INSTALL_SHARE);
    for (const fs::path &candidate : candidates) {
        std::error_code error;
        if (fs::is_directory(candidate / "toolsets", error)) {
            return candidate;
        }
    }
    return {};
}

fs::path userDirectory() { return belowHome("XDG_CONFIG_HOME", ".config"); }

fs::path cacheDirectory() { return belowHome("XDG_CACHE_HOME", ".cache"); }

} // namespace orchard
