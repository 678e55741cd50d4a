#include "CM/platform/ThisProcess.h"

#include <array>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace platform {

namespace {

std::string userName() {
    constexpr std::size_t enough = 16384;
    std::vector<char> names(enough);
    struct passwd entry = {};
    struct passwd *found = nullptr;
    getpwuid_r(geteuid(), &entry, names.data(), names.size(), &found);
    return found == nullptr ? std::string() : found->pw_name;
}

std::string hostName() {
    std::array<char, 256> name = {}; // the last character remains NUL
    return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : std::string();
}

} // namespace

std::string describeThisProcess() {
    std::string text = "process " + std::to_string(getpid());
    const std::string user = userName();
    const std::string host = hostName();
    text += user.empty() ? "" : " of " + user;
    text += host.empty() ? "" : " on " + host;
    return text;
}

} // namespace platform
