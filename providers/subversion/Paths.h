// Maps the paths of a host to those of the Subversion libraries.
#pragma once

#include <string>
#include <string_view>

namespace svnscc {

/// A path of the host in the form that the Subversion libraries use: absolute, with "/", without one at the end,
/// and without "." parts. Either separator is understood. Throws Failure (SCC_E_FILESYNTAXERR) for a path that is
/// null, empty, relative or no UTF-8.
std::string internalPath(const char *path);

/// An URL in the form that the Subversion libraries use. Throws Failure (SCC_E_PROJSYNTAXERR) for anything else.
std::string internalUrl(std::string_view url);
/// Whether a text begins like an URL.
bool looksLikeUrl(std::string_view text);
/// The URL of a path below another URL, with the characters escaped that an URL can't hold.
std::string urlBelow(const std::string &url, std::string_view path);

/// The last part of a path.
std::string baseName(const std::string &path);
/// The directory of a path.
std::string directoryOf(const std::string &path);
std::string joined(const std::string &directory, const std::string &path);
/// Whether `path` is `directory`, or is below it.
bool isWithin(const std::string &directory, const std::string &path);
/// What follows `directory` in `path`, which is within it; empty for the directory itself.
std::string relativeTo(const std::string &directory, const std::string &path);
/// The longest directory that both paths are within.
std::string commonDirectory(const std::string &one, const std::string &other);

/// Whether there is anything at a path, a dangling link included.
bool exists(const std::string &path);

} // namespace svnscc
