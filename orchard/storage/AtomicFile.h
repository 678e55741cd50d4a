// Writing a file so that it is whole, old or new, whatever happens.
#pragma once

#include <string>
#include <string_view>

namespace orchard {

/// Writes beside the file, flushes and renames. A link is followed; permission bits of a file that is there
/// already are kept. Empty on success; else why not, and the old file stays.
[[nodiscard]] std::string writeWholeFile(const std::string &path, std::string_view text);

/// Makes a new file, fast: for a directory that is thrown away if anything goes wrong. One that is there already
/// is a failure.
[[nodiscard]] std::string writeNewFile(const std::string &path, std::string_view text);

/// Whether a file is there that its permission bits bar from being written.
[[nodiscard]] bool isWriteProtected(const std::string &path);

} // namespace orchard
