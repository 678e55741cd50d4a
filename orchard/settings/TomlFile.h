// Reads a TOML file with limits that protect against files from elsewhere.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include <toml++/toml.h>

namespace orchard {

/// The largest file that is read.
constexpr std::size_t largestTomlFile = 1U << 20U;

/// "NAME:LINE:COLUMN".
std::string placeIn(const std::string &name, const toml::source_region &region);

/// Parses text. Returns no value for text that is not TOML, with "NAME:LINE:COLUMN: reason" in `problem`.
std::optional<toml::table> parseToml(std::string_view text, const std::string &name, std::string &problem);

/// Reads a file. Returns no value, with the reason in `problem`, if it can't be read, is larger than
/// largestTomlFile or is not TOML.
std::optional<toml::table> readToml(const std::filesystem::path &file, std::string &problem);

} // namespace orchard
