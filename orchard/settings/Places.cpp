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

/// The directory of the library or program that contains this code.
fs::path directoryOfThisCode() {
    Dl_info info{};
    std::error_code error;
    if (dladdr(reinterpret_cast<void *>(&directoryOfThisCode), &info) == 0 || info.dli_fname == nullptr) {
        return {};
    }
    const fs::path file = fs::weakly_canonical(info.dli_fname, error);
    return error ? fs::path() : file.parent_path();
}

/// The directory that ORCHARD_SHARE names, relative to the current directory at the first call with that name.
/// Reports a name that is not a directory.
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
    // Outside the lock, because reporting may call this function again.
    const std::string text = "ORCHARD_SHARE names " + place.string() + ", which is not a directory.";
    LogTrace::Log(LogTrace::Log::cm).Min("orchard/settings", 0, text);
    static_cast<void>(notifyUserAndAsk(text, MB_ICONEXCLAMATION, 0, messageLevelDefault));
    return place;
}

} // namespace

fs::path shareDirectory() {
    if (const char *const named = std::getenv("ORCHARD_SHARE"); named != nullptr && *named != '\0') {
        return namedShare(named);
    }
    std::vector<fs::path> candidates;
    // A library may be two levels below the prefix, as in lib/x86_64-linux-gnu.
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

} // namespace orchard
