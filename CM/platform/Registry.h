// The registry: a file in the REGEDIT4 text form. It is the file that the environment variable ORCHARD_REGISTRY
// names; without that variable the one in the user's configuration directory (orchard/registry.reg below
// XDG_CONFIG_HOME or ~/.config), else the system's (/etc/orchard/registry.reg).
// Key and value names compare without regard to the case of ASCII letters.
#pragma once

#include "CM/platform/CString.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace platform {

struct RegistryValue {
    enum class Type { text, dword, binary };
    Type type = Type::text;
    CString text;                     ///< for Type::text
    unsigned long number = 0;         ///< for Type::dword, 32 bits
    std::vector<unsigned char> bytes; ///< for Type::binary
};

class Registry {
  public:
    /// Receives one line for each thing that made the registry, or a part of it, unusable.
    using Report = std::function<void(const CString &)>;

    /// The registry of this machine as it stands now. A missing or broken file gives an empty registry,
    /// and `report` hears the reason.
    static Registry open(const Report &report);
    /// The registry in one file, with the same reports. Files of more than 64 MiB are refused.
    static Registry read(const CString &path, const Report &report);
    /// Reads a registry from text: UTF-8, with or without a byte-order mark, or UTF-16 (little-endian) with one;
    /// either line end. The first line must be "REGEDIT4" or "Windows Registry Editor Version 5.00", else the
    /// registry is empty. A line that can't be read is reported as "NAME:LINE:COLUMN: reason" (counted from 1, in
    /// bytes) and left out; the others are kept, except the values below a key line that can't be read. After a
    /// hundred reports the rest is only counted.
    static Registry parse(std::string_view text, const CString &name, const Report &report);

    /// Whether the key, or one below it, exists, such as "HKEY_LOCAL_MACHINE\Software\X". A separator at the end
    /// makes no difference.
    [[nodiscard]] bool hasKey(const CString &key) const;
    /// The value, or none if the key or the value is missing. The empty name is the key's default value.
    [[nodiscard]] std::optional<RegistryValue> value(const CString &key, const CString &name) const;
    /// The names of all values of a key in the order of the file; the default value's name is empty.
    [[nodiscard]] std::vector<CString> valueNames(const CString &key) const;

    /// Makes a key without values; one that is there stays as it is.
    void addKey(const CString &key);
    /// Removes the key with all keys below it.
    void removeKey(const CString &key);
    /// Sets a value, and makes the key where it is new. A value that was there keeps its place in the order.
    void setValue(const CString &key, const CString &name, RegistryValue value);
    void removeValue(const CString &key, const CString &name);

  private:
    friend class RegistryParser; // sets the values of a key without looking it up for each

    struct Key {
        void set(const CString &name, RegistryValue value);
        void remove(const CString &name);

        /// In the order of the file; a removed value leaves an empty place.
        std::vector<std::optional<std::pair<CString, RegistryValue>>> values;
        std::unordered_map<std::string, std::size_t, NoCaseHash, NoCaseEqual> places;
    };
    [[nodiscard]] const Key *find(const CString &key) const;
    Key &obtain(const CString &key);

    /// By the name in lower case, so that the keys below a key stand together.
    std::map<std::string, Key, std::less<>> keys_;
};

} // namespace platform
