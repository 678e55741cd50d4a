// Reads a property set: an administrator's description of a CM tool, in one TOML file.
//
//   tool = "RCS"                          # the tool that the set is for; left out for a set of defaults
//   description = "GNU RCS, ..."          # one line for lists of tools
//   [ConfigurationManagement.RCS]         # subject and metaclass of the properties that follow
//   CheckOut = 'co -q $mode "$UnitPath"'  # a text, a whole number, true or false
#pragma once

#include "orchard/OrchardApi.h"
#include "orchard/properties/PropertyTable.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace orchard {

class ORCHARD_API PropertySet {
  public:
    PropertySet(const PropertySet &) = delete;
    PropertySet &operator=(const PropertySet &) = delete;

    /// Reads a set from text. For a text with a mistake, returns null and sets `problem` to "NAME:LINE:COLUMN:
    /// what is wrong": a set with a mistake is ignored completely.
    static std::unique_ptr<PropertySet> parse(std::string_view text, const std::string &name,
                                              std::string &problem);
    /// The same for a file.
    static std::unique_ptr<PropertySet> read(const std::filesystem::path &file, std::string &problem);

    /// The tool's name, or the file's name without extension for a set without a tool.
    [[nodiscard]] const std::string &name() const { return name_; }
    /// The CM tool of the set; empty for a set of defaults.
    [[nodiscard]] const std::string &tool() const { return tool_; }
    [[nodiscard]] const std::string &description() const { return description_; }
    [[nodiscard]] const std::string &file() const { return file_; }
    [[nodiscard]] const PropertyTable &table() const { return table_; }

  private:
    PropertySet() = default;
    friend class PropertySetReader;

    std::string name_;
    std::string tool_;
    std::string description_;
    std::string file_;
    PropertyTable table_;
};

} // namespace orchard
