// Paths as texts, with either separator.
#pragma once

#include <string>
#include <string_view>

namespace orchard {

/// Full paths without "." and "..", with '/' between the parts and none at the end; a relative path is taken from
/// `base`, which must be a full path.
[[nodiscard]] std::string normalPath(std::string_view path, std::string_view base);
/// Whether the path begins at the root (or with a drive letter and a separator).
[[nodiscard]] bool isAbsolutePath(std::string_view path);
[[nodiscard]] inline bool isSeparator(char character) { return character == '/' || character == '\\'; }
[[nodiscard]] inline bool hasSeparator(std::string_view path) {
    return path.find_first_of("/\\") != std::string_view::npos;
}
/// Whether the normal path `path` lies in the directory `directory` (a normal path), at any depth.
[[nodiscard]] bool liesIn(std::string_view path, std::string_view directory);
[[nodiscard]] std::string_view fileOfPath(std::string_view path);
/// What stands before the last separator; empty without one.
[[nodiscard]] std::string_view directoryOfPath(std::string_view path);
/// The extension with its dot, or empty; a dot in a directory's name or at the start of a name is none.
[[nodiscard]] std::string_view extensionOf(std::string_view path);
/// The normal path from `directory` to `path`, with ".." where need be.
[[nodiscard]] std::string relativePath(std::string_view path, std::string_view directory);

/// Why a file or directory of this name can't be a unit's, in words that end a sentence; empty if it can. A
/// command template quotes file names, so what would end or change a quoted text is refused.
[[nodiscard]] std::string faultOfFileName(std::string_view name);
/// The same for every part of a path, which either separator may end; empty parts, "." and ".." may stand. The
/// whole path reaches the same command line as the name does, so it must not hold a conditional of templates
/// either, be it spread over several parts: "(", then "?", then ")".
[[nodiscard]] std::string faultOfPath(std::string_view path);
/// Why this can't be the directory of a unit, given relative to that of its owner; it may not lead out of there.
[[nodiscard]] std::string faultOfDirectory(std::string_view directory);

} // namespace orchard
