// Reads the environment settings: the switches that oqGetEnvVar returns.
#pragma once

#include "CM/platform/CString.h"
#include "orchard/OrchardApi.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orchard {

/// Holds settings by section and key, ignoring case in both.
class ORCHARD_API Settings {
  public:
    /// Reads a TOML text with a table for each section. Values are texts, numbers, or true and false, which are
    /// read as "TRUE" and "FALSE". Reports each unusable value in `problems` with its place and reads the rest;
    /// returns empty settings for text that is not TOML.
    static Settings parse(std::string_view text, const std::string &name, std::vector<std::string> &problems);
    /// Reads a file; one that doesn't exist yields no settings and no problem.
    static Settings read(const std::filesystem::path &file, std::vector<std::string> &problems);

    /// The value, or null.
    [[nodiscard]] const std::string *find(std::string_view section, std::string_view key) const;
    void set(std::string_view section, std::string_view key, std::string_view value);

    /// The file in use: the one that the environment variable ORCHARD_SETTINGS names, else settings.toml in the
    /// user's configuration directory.
    static std::filesystem::path standardFile();

  private:
    template <class VALUE> using NoCaseMap = std::unordered_map<std::string, VALUE, NoCaseHash, NoCaseEqual>;
    NoCaseMap<NoCaseMap<std::string>> sections_;
};

/// The settings that oqGetEnvVar uses, read from the standard file at the first call. The problems of the file are
/// reported once, in the log and to the user.
ORCHARD_API Settings &settingsInForce();
/// Overrides a setting until the process ends, for example for a command-line switch.
ORCHARD_API void overrideSetting(std::string_view section, std::string_view key, std::string_view value);

} // namespace orchard
