// Writes a file so that it is complete, old or new, whatever happens.
#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Writes beside the file, flushes and renames. A link is followed; permission bits of a file that is there
/// already are kept. Empty on success; else why not, and the old file stays.
[[nodiscard]] std::string writeWholeFile(const std::string &path, std::string_view text);

/// Makes a new file without flushing it: for a directory that is removed if anything goes wrong. One that is there
/// already is a failure. Empty on success; else why not.
[[nodiscard]] std::string writeNewFile(const std::string &path, std::string_view text);

} // namespace platform
