// Reading a TOML file with the care that a file from elsewhere needs.
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

/// Parses text. No value for text that is no TOML, with the reason in `problem` as "NAME:LINE:COLUMN: reason".
std::optional<toml::table> parseToml(std::string_view text, const std::string &name, std::string &problem);

/// Reads a file. No value if it can't be read, is larger than largestTomlFile or is no TOML; `problem` tells why.
std::optional<toml::table> readToml(const std::filesystem::path &file, std::string &problem);

} // namespace orchard
