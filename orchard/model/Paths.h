// Handles unit paths as text, with either separator, and checks whether a unit may have a given path.
#pragma once

#include "CM/platform/PathText.h"
#include "orchard/OrchardApi.h"

#include <string>
#include <string_view>

namespace orchard {

using platform::directoryOfPath;
using platform::fileOfPath;
using platform::hasSeparator;
using platform::isAbsolutePath;
using platform::isSeparator;

/// Returns a full path without "." and "..", with '/' between the parts and none at the end. Resolves a relative
/// path against `base`, which must be a full path.
[[nodiscard]] ORCHARD_API std::string normalPath(std::string_view path, std::string_view base);
/// Whether the normal path `path` is in the directory `directory` (a normal path), at any depth.
[[nodiscard]] ORCHARD_API bool liesIn(std::string_view path, std::string_view directory);
/// The extension with its dot, or empty; a dot in a directory's name or at the start of the file's name does not
/// begin one.
[[nodiscard]] std::string_view extensionOf(std::string_view path);
/// The normal path from `directory` to `path`, with ".." where needed.
[[nodiscard]] std::string relativePath(std::string_view path, std::string_view directory);

/// Returns why a unit's file or directory can't have this name, as a clause to be appended to a message; empty if
/// it can. Refuses names that a command template can't quote.
[[nodiscard]] std::string faultOfFileName(std::string_view name);
/// The same for a path, which ends up on the same command line as the name. Allows empty parts, "." and "..".
[[nodiscard]] ORCHARD_API std::string faultOfPath(std::string_view path);
/// Why this can't be the directory of a unit, relative to its owner's directory, which it may not leave.
[[nodiscard]] std::string faultOfDirectory(std::string_view directory);

} // namespace orchard
