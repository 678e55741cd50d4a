// The registry: a file in the REGEDIT4 text form. It is looked for in the file that the environment variable
// ORCHARD_REGISTRY names, else in the user's configuration directory (orchard/registry.reg below
// XDG_CONFIG_HOME or ~/.config), else in the system's (/etc/orchard/registry.reg). The first that exists counts.
// Key and value names compare without regard to case.
#pragma once

#include "CM/platform/CString.h"

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace platform {

struct RegistryValue {
    enum class Type { text, dword, binary };
    Type type = Type::text;
    CString text;                     ///< for Type::text
    unsigned long number = 0;         ///< for Type::dword
    std::vector<unsigned char> bytes; ///< for Type::binary
};

class Registry {
  public:
    /// Receives one line for each thing that made the registry, or a part of it, unusable.
    using Report = std::function<void(const CString &)>;

    /// The registry of this machine as it stands now. A missing or broken file gives an empty registry,
    /// and `report` hears the reason.
    static Registry open(const Report &report);
    /// Reads a registry from text. A line that can't be read is reported as "NAME:LINE:COLUMN: reason",
    /// and what stood before it is kept.
    static Registry parse(std::string_view text, const CString &name, const Report &report);

    /// Whether the key exists, such as "HKEY_LOCAL_MACHINE\Software\X".
    [[nodiscard]] bool hasKey(const CString &key) const;
    /// The value, or none if the key or the value is missing. The empty name is the key's default value.
    [[nodiscard]] std::optional<RegistryValue> value(const CString &key, const CString &name) const;
    /// The names of all values of a key in the order of the file; the default value's name is empty.
    [[nodiscard]] std::vector<CString> valueNames(const CString &key) const;

  private:
    struct Key {
        CString name;
        std::vector<std::pair<CString, RegistryValue>> values;
    };
    std::vector<Key> keys_;
};

} // namespace platform
