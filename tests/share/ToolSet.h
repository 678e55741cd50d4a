// Reads the shipped property set of a tool and applies its patterns to a text.
#pragma once

#include "CM/host/SPString.h"
#include "orchard/properties/InstalledSets.h"
#include "orchard/properties/PropertyTable.h"

#include <filesystem>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace share_tests {

/// Whether the patterns of a set recognise a tool's output as an error or as a warning.
enum class Kind { nothing, warning, error };

inline std::ostream &operator<<(std::ostream &stream, Kind kind) {
    return stream << (kind == Kind::error ? "an error" : kind == Kind::warning ? "a warning" : "nothing");
}

/// A file of a listing.
struct Listed {
    std::string file;
    std::string version;
    std::string mode; ///< "rw" or "ro"; "?" where the set has no pattern for it
    std::string locker;
    bool operator==(const Listed &other) const = default;
    friend std::ostream &operator<<(std::ostream &stream, const Listed &listed) {
        return stream << '{' << listed.file << ' ' << listed.version << ' ' << listed.mode << " '" << listed.locker
                      << "'}";
    }
};

class ToolSet {
  public:
    explicit ToolSet(std::string tool) : tool_(std::move(tool)) {}

    /// Returns the value of a key; "(none)" if the set has none.
    [[nodiscard]] std::string value(const char *key) const {
        static const orchard::InstalledSets all({std::filesystem::path(SHARE_DIRECTORY) / "toolsets"});
        const IProperty *const property = all.find("ConfigurationManagement", tool_.c_str(), key);
        return property == nullptr ? "(none)" : property->getValue().str();
    }

    /// Returns what the first group of a key's pattern finds; empty if it doesn't match or the set has no pattern.
    [[nodiscard]] std::string find(const char *key, const std::string &text) const {
        SPStringList groups;
        return matches(key, text, groups) ? groups[1].str() : std::string();
    }
    [[nodiscard]] bool matches(const char *key, const std::string &text) const {
        SPStringList groups;
        return matches(key, text, groups);
    }

    [[nodiscard]] Kind kindOf(const std::string &message) const {
        return matches("OperationErrorPattern", message)     ? Kind::error
               : matches("OperationWarningPattern", message) ? Kind::warning
                                                             : Kind::nothing;
    }

    /// Returns the files of a listing, in its order.
    [[nodiscard]] std::vector<Listed> list(const std::string &output) const {
        std::vector<Listed> files;
        SPStringList records;
        records.split(SPString(output.c_str()), SPString(value("MultiRecordDelimiter").c_str()), -1);
        while (records.count() > 0) {
            const std::string record = records.shift().str();
            SPStringList name;
            if (matches("ListArchiveItsWorkingFile", record, name)) {
                files.push_back({name[1].str(), find("ListArchiveItsVersion", record),
                                 value("ListArchiveItsMode").empty()     ? "?"
                                 : matches("ListArchiveItsMode", record) ? "rw"
                                                                         : "ro",
                                 find("ListArchiveItsLocker", record)});
            }
        }
        return files;
    }

  private:
    bool matches(const char *key, const std::string &text, SPStringList &groups) const {
        const std::string pattern = value(key);
        return !pattern.empty() && SPString(text.c_str()).m(pattern.c_str(), groups, "i") != 0 &&
               groups.count() > 0;
    }

    std::string tool_;
};

struct MessageRow {
    const char *name;
    const char *text;
    Kind kind;
    friend std::ostream &operator<<(std::ostream &stream, const MessageRow &row) { return stream << row.text; }
};

} // namespace share_tests
