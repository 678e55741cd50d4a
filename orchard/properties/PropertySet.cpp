#include "orchard/properties/PropertySet.h"

#include "orchard/properties/PropertyData.h"
#include "orchard/settings/TomlFile.h"

#include <algorithm>
#include <optional>

namespace orchard {

/// Turns a TOML table into a set, or reports the first mistake.
class PropertySetReader {
  public:
    PropertySetReader(std::string file, std::string &problem) : file_(std::move(file)), problem_(problem) {}

    std::unique_ptr<PropertySet> read(const toml::table &table) {
        std::unique_ptr<PropertySet> set(new PropertySet);
        set->file_ = file_;
        for (const auto &[key, value] : table) {
            const std::string_view name = key.str();
            const bool taken = name == "tool"          ? takeWord(value, name, set->tool_)
                               : name == "description" ? takeWord(value, name, set->description_)
                                                       : takeSubject(value, name, set->table_);
            if (!taken) {
                return nullptr;
            }
        }
        set->name_ = set->tool_.empty() ? std::filesystem::path(file_).stem().string() : set->tool_;
        return set;
    }

  private:
    bool refuse(const toml::node &node, const std::string &reason) {
        problem_ = placeIn(file_, node.source()) + ": " + reason;
        return false;
    }

    bool takeWord(const toml::node &node, std::string_view key, std::string &value) {
        const auto *const text = node.as_string();
        if (text == nullptr || text->get().empty() ||
            std::any_of(text->get().begin(), text->get().end(),
                        [](char c) { return static_cast<unsigned char>(c) < ' '; })) {
            return refuse(node, "'" + std::string(key) + "' must be a text on one line");
        }
        value = text->get();
        return true;
    }

    bool takeSubject(const toml::node &node, std::string_view subject, PropertyTable &table) {
        const toml::table *const metaclasses = node.as_table();
        if (metaclasses == nullptr) {
            return refuse(node, "'" + std::string(subject) +
                                    "' is outside a table; properties belong below a heading such as "
                                    "[ConfigurationManagement.RCS]");
        }
        return std::all_of(metaclasses->begin(), metaclasses->end(), [&](const auto &entry) {
            return takeMetaclass(entry.second, subject, entry.first.str(), table);
        });
    }

    bool takeMetaclass(const toml::node &node, std::string_view subject, std::string_view metaclass,
                       PropertyTable &table) {
        const toml::table *const properties = node.as_table();
        if (properties == nullptr) {
            return refuse(node, "the property '" + std::string(metaclass) + "' has no metaclass; write [" +
                                    std::string(subject) + ".TOOL] above it, with the tool's name");
        }
        return std::all_of(properties->begin(), properties->end(), [&](const auto &entry) {
            return takeProperty(entry.second, subject, metaclass, entry.first.str(), table);
        });
    }

    bool takeProperty(const toml::node &node, std::string_view subject, std::string_view metaclass,
                      std::string_view key, PropertyTable &table) {
        std::string type;
        std::string value;
        if (const auto *const text = node.as_string()) {
            type = "String";
            value = text->get();
        } else if (const auto *const number = node.as_integer()) {
            type = "Int";
            value = std::to_string(number->get());
        } else if (const auto *const truth = node.as_boolean()) {
            type = "Bool";
            value = truth->get() ? "True" : "False";
        } else {
            return refuse(node,
                          "the property '" + std::string(key) + "' must be a text, an integer, true or false");
        }
        if (value.find('\0') != std::string::npos) {
            return refuse(node, "the property '" + std::string(key) + "' contains a NUL character");
        }
        if (table.find(subject, metaclass, key) != nullptr) {
            return refuse(node, "the property '" + std::string(key) +
                                    "' occurs twice; keys that differ only "
                                    "in upper and lower case are the same");
        }
        IProperty::Data &data = table.set(subject, metaclass, key, type, value).data();
        data.isInstalled = true;
        data.source = placeIn(file_, node.source());
        return true;
    }

    std::string file_;
    std::string &problem_;
};

std::unique_ptr<PropertySet> PropertySet::parse(std::string_view text, const std::string &name,
                                                std::string &problem) {
    const auto table = parseToml(text, name, problem);
    return table ? PropertySetReader(name, problem).read(*table) : nullptr;
}

std::unique_ptr<PropertySet> PropertySet::read(const std::filesystem::path &file, std::string &problem) {
    const auto table = readToml(file, problem);
    return table ? PropertySetReader(file.string(), problem).read(*table) : nullptr;
}

} // namespace orchard
