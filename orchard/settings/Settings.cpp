#include "orchard/settings/Settings.h"

#include "CM/host/LogTrace.h"
#include "CM/host/Messages.h"
#include "CM/host/Utilities.h"
#include "orchard/base/UserDirectories.h"
#include "orchard/settings/TomlFile.h"

#include <cstdlib>
#include <system_error>
#include <utility>

namespace orchard {
namespace {

constexpr auto fileVariable = "ORCHARD_SETTINGS";

bool isNamed() {
    const char *const name = std::getenv(fileVariable);
    return name != nullptr && *name != '\0';
}

void take(Settings &settings, const toml::table &table, const std::string &name,
          std::vector<std::string> &problems) {
    for (const auto &[sectionName, section] : table) {
        const toml::table *const entries = section.as_table();
        if (entries == nullptr) {
            problems.push_back(placeIn(name, section.source()) + ": the setting '" +
                               std::string(sectionName.str()) +
                               "' is outside a section; write [General] above it");
            continue;
        }
        for (const auto &[key, value] : *entries) {
            if (const auto *const text = value.as_string()) {
                settings.set(sectionName.str(), key.str(), text->get());
            } else if (const auto *const number = value.as_integer()) {
                settings.set(sectionName.str(), key.str(), std::to_string(number->get()));
            } else if (const auto *const truth = value.as_boolean()) {
                settings.set(sectionName.str(), key.str(), truth->get() ? "TRUE" : "FALSE");
            } else {
                problems.push_back(placeIn(name, value.source()) + ": the setting '" + std::string(key.str()) +
                                   "' must be a text, an integer, true or false");
            }
        }
    }
}

/// Reads the file that ORCHARD_SETTINGS names, which must exist, or else the user's own, which need not.
Settings standardSettings(std::vector<std::string> &problems) {
    const std::filesystem::path file = Settings::standardFile();
    std::error_code error;
    if (!file.empty() && isNamed() && !std::filesystem::exists(file, error)) {
        problems.push_back(file.string() + ": there is no such file (" + fileVariable + " names it)");
    }
    return Settings::read(file, problems);
}

} // namespace

Settings Settings::parse(std::string_view text, const std::string &name, std::vector<std::string> &problems) {
    Settings settings;
    std::string problem;
    if (const auto table = parseToml(text, name, problem)) {
        take(settings, *table, name, problems);
    } else {
        problems.push_back(problem);
    }
    return settings;
}

Settings Settings::read(const std::filesystem::path &file, std::vector<std::string> &problems) {
    Settings settings;
    std::error_code error;
    if (file.empty() || !std::filesystem::exists(file, error)) {
        return settings;
    }
    std::string problem;
    if (const auto table = readToml(file, problem)) {
        take(settings, *table, file.string(), problems);
    } else {
        problems.push_back(problem);
    }
    return settings;
}

const std::string *Settings::find(std::string_view section, std::string_view key) const {
    const auto entries = sections_.find(section);
    if (entries == sections_.end()) {
        return nullptr;
    }
    const auto found = entries->second.find(key);
    return found == entries->second.end() ? nullptr : &found->second;
}

void Settings::set(std::string_view section, std::string_view key, std::string_view value) {
    sections_[std::string(section)].insert_or_assign(std::string(key), std::string(value));
}

std::filesystem::path Settings::standardFile() {
    if (isNamed()) {
        return std::getenv(fileVariable);
    }
    const std::filesystem::path directory = userDirectory();
    return directory.empty() ? directory : directory / "settings.toml";
}

Settings &settingsInForce() {
    static std::vector<std::string> problems;
    static Settings settings = standardSettings(problems);
    // Reporting may call this function again, so the problems are removed first.
    for (const std::string &problem : std::exchange(problems, {})) {
        LogTrace::Log(LogTrace::Log::cm).Min("orchard/settings", 0, problem);
        static_cast<void>(notifyUserAndAsk("The settings can't be used.\n" + problem, MB_ICONEXCLAMATION, 0,
                                           messageLevelDefault));
    }
    return settings;
}

void overrideSetting(std::string_view section, std::string_view key, std::string_view value) {
    settingsInForce().set(section, key, value);
}

} // namespace orchard

int oqGetEnvVar(const CString &section, const CString &key, CString &value, CString *second) {
    const std::string *const found = orchard::settingsInForce().find(section, key);
    if (found == nullptr) {
        return 0;
    }
    value = *found;
    if (second != nullptr) {
        second->Empty(); // a setting has one value in this host
    }
    return 1;
}
