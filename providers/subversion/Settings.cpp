#include "providers/subversion/Settings.h"

#include "providers/subversion/RegistryText.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace svnscc {

namespace {

std::string environment(const char *name) {
    const char *value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// Where the registry of this machine may be: the first that exists counts.
std::vector<std::string> registryFiles() {
    if (std::string named = environment("ORCHARD_REGISTRY"); !named.empty()) {
        return {std::move(named)};
    }
    std::vector<std::string> files;
    if (const std::string configuration = environment("XDG_CONFIG_HOME"); configuration.starts_with('/')) {
        files.push_back(configuration + "/orchard/registry.reg");
    } else if (const std::string home = environment("HOME"); !home.empty()) {
        files.push_back(home + "/.config/orchard/registry.reg");
    }
    files.emplace_back("/etc/orchard/registry.reg");
    return files;
}

std::string registryContents() {
    constexpr std::uintmax_t limit = 64U << 20U;
    for (const std::string &file : registryFiles()) {
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(file, error);
        if (!error) {
            std::ifstream stream(file, std::ios::binary);
            return size <= limit ? std::string(std::istreambuf_iterator<char>(stream), {}) : std::string();
        }
    }
    return {};
}

} // namespace

Settings readSettings() {
    auto texts = textsOfKey(registryContents(), R"(HKEY_LOCAL_MACHINE\Software\Subversion\SCCServer)");
    return {texts["repositoryroot"], texts["user"], texts["configdir"]};
}

} // namespace svnscc
