// Reads the text values of the registry, a file in the REGEDIT4 text format: the file that the environment
// variable ORCHARD_REGISTRY names; without that variable the one in the user's configuration directory
// (orchard/registry.reg below XDG_CONFIG_HOME or ~/.config), else the system's (/etc/orchard/registry.reg). Key
// and value names compare without regard to the case of ASCII letters.
#pragma once

#include "CM/platform/CString.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct RegistryText {
    CString text;
    bool isExpandable = false; ///< REG_EXPAND_SZ: it may contain names of environment variables; else REG_SZ
};

class Registry {
  public:
    /// Receives one line for each thing that makes the registry, or a part of it, unusable.
    using Report = std::function<void(const CString &)>;

    /// The registry of this machine as it is now. A missing or broken file gives an empty registry, with a report.
    static Registry open(const Report &report);
    /// The registry in one file, with the same reports. Files of more than 64 MiB are refused.
    static Registry read(const CString &path, const Report &report);
    /// Reads a registry from text: UTF-8, with or without a byte-order mark, or UTF-16 (little-endian) with one;
    /// either line end. The first line must be "REGEDIT4" or "Windows Registry Editor Version 5.00", else the
    /// registry is empty. A key or text that can't be read is reported as "NAME:LINE: reason" (counted from 1) and
    /// left out; values of other types and other lines are skipped.
    static Registry parse(std::string_view text, const CString &name, const Report &report);

    /// The value of a key, such as "HKEY_LOCAL_MACHINE\Software\X"; none if the key or the value is missing, or is
    /// not a text. An empty name means the key's default value. A separator at the end of the key makes no
    /// difference.
    [[nodiscard]] std::optional<RegistryText> text(const CString &key, const CString &name) const;
    /// The names of the texts of a key, sorted.
    [[nodiscard]] std::vector<CString> textNames(const CString &key) const;

  private:
    friend class RegistryParser;

    struct Value {
        CString name; ///< as it is written
        RegistryText text;
    };
    using Key = std::map<std::string, Value>;
    /// The form in which names of keys and values are compared.
    [[nodiscard]] static std::string folded(const CString &name);
    [[nodiscard]] const Key *find(const CString &key) const;

    std::map<std::string, Key> keys_;
};

} // namespace platform
