// The environment settings: the switches that oqGetEnvVar reads.
#pragma once

#include "CM/platform/CString.h"
#include "orchard/OrchardApi.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orchard {

/// Settings by section and key, which compare without regard to case.
class ORCHARD_API Settings {
  public:
    /// Reads a TOML text with a table for each section. Values are texts, numbers, and true and false, which are
    /// taken as "TRUE" and "FALSE". What can't be used is told in `problems` with its place, and the rest counts;
    /// a text that is no TOML gives no settings at all.
    static Settings parse(std::string_view text, const std::string &name, std::vector<std::string> &problems);
    /// Reads a file; one that doesn't exist gives no settings and no problem.
    static Settings read(const std::filesystem::path &file, std::vector<std::string> &problems);

    /// The value, or null.
    [[nodiscard]] const std::string *find(std::string_view section, std::string_view key) const;
    void set(std::string_view section, std::string_view key, std::string_view value);

    /// The file that counts: what the environment variable ORCHARD_SETTINGS names, else settings.toml of the
    /// user's configuration directory.
    static std::filesystem::path standardFile();

  private:
    template <class VALUE> using NoCaseMap = std::unordered_map<std::string, VALUE, NoCaseHash, NoCaseEqual>;
    NoCaseMap<NoCaseMap<std::string>> sections_;
};

/// The settings that oqGetEnvVar answers from. They are read from the standard file at the first call; what
/// is wrong with the file is told once on the log and to the user.
ORCHARD_API Settings &settingsInForce();
/// Sets one for the rest of the process, such as for a command-line switch.
ORCHARD_API void overrideSetting(std::string_view section, std::string_view key, std::string_view value);

} // namespace orchard
