#include "orchard/settings/TomlFile.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
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
    std::ifstream stream(file, std::ios::binary);
    std::string text(largestTomlFile + 1, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    if (stream.bad() || (!stream.eof() && !stream)) {
        problem = file.string() + ": " + std::strerror(errno);
        return std::nullopt;
    }
    if (text.size() > largestTomlFile) {
        problem = file.string() + ": it is larger than " + std::to_string(largestTomlFile >> 10U) + " KiB";
        return std::nullopt;
    }
    return parseToml(text, file.string(), problem);
}

} // namespace orchard
