// Handles paths as text, without disk access. Both '/' and '\' are separators.
#pragma once

#include <string_view>

namespace platform {

/// Both kinds of separator, as a set for searches.
inline constexpr std::string_view separators = "/\\";

[[nodiscard]] constexpr bool isSeparator(char character) { return separators.find(character) != separators.npos; }
[[nodiscard]] constexpr bool hasSeparator(std::string_view path) {
    return path.find_first_of(separators) != path.npos;
}

/// Whether the path begins with a separator, or with a drive letter, a colon and a separator. "C:a" is relative to
/// the current directory of its drive.
[[nodiscard]] bool isAbsolutePath(std::string_view path);
/// The text before the last separator; empty without one.
[[nodiscard]] std::string_view directoryOfPath(std::string_view path);
/// The text after the last separator; the complete path without one.
[[nodiscard]] std::string_view fileOfPath(std::string_view path);

} // namespace platform
