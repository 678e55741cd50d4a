// Writes a file so that it is complete, old or new, whatever happens.
#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Writes a temporary file in the same directory, flushes it and renames it over the target. Follows a link and
/// keeps the permission bits of an existing file. Returns an empty string, or the reason for the failure; the old
/// file is then unchanged.
[[nodiscard]] std::string writeWholeFile(const std::string &path, std::string_view text);

/// Creates a file without flushing it, for use in a directory that is deleted if anything goes wrong. Fails if the
/// file exists. Returns an empty string, or the reason for the failure.
[[nodiscard]] std::string writeNewFile(const std::string &path, std::string_view text);

/// Writes to the disk what was written to files of the file system that holds the directory, so that files made
/// with writeNewFile survive a crash. Empty on success; else why not.
[[nodiscard]] std::string flushFileSystemOf(const std::string &directory);

} // namespace platform
