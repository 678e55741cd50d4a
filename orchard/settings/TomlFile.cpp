#include "orchard/settings/TomlFile.h"

#include "CM/platform/Files.h"

#include <system_error>

namespace orchard {

std::string placeIn(const std::string &name, const toml::source_region &region) {
    return name + ":" + std::to_string(region.begin.line) + ":" + std::to_string(region.begin.column);
}

std::optional<toml::table> parseToml(std::string_view text, const std::string &name, std::string &problem) {
    try {
        return toml::parse(text);
    } catch (const toml::parse_error &error) {
        problem = placeIn(name, error.source()) + ": " + std::string(error.description());
        return std::nullopt;
    }
}

std::optional<toml::table> readToml(const std::filesystem::path &file, std::string &problem) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        problem = file.string() + ": it is not a regular file that can be read";
        return std::nullopt;
    }
    const auto text = platform::readFile(file.string(), largestTomlFile + 1);
    if (!text) {
        problem = file.string() + ": " + platform::lastErrorText().str();
        return std::nullopt;
    }
    if (text->size() > largestTomlFile) {
        problem = file.string() + ": it is larger than " + std::to_string(largestTomlFile >> 10U) + " KiB";
        return std::nullopt;
    }
    return parseToml(*text, file.string(), problem);
}

} // namespace orchard
