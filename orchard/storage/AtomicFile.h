// Writing a file so that it is whole, old or new, whatever happens.
#pragma once

#include <string>
#include <string_view>

namespace orchard {

enum class Durability {
    flushed, ///< on the disk before the old file goes
    quick,   ///< for files that can be made again, such as those of a new project
};

/// Writes beside the file and renames. A link is followed; permission bits of a file that is there already are
/// kept. Empty on success; else why not, and the old file stays.
[[nodiscard]] std::string writeWholeFile(const std::string &path, std::string_view text,
                                         Durability durability = Durability::flushed);

/// Whether a file is there that its permission bits bar from being written.
[[nodiscard]] bool isWriteProtected(const std::string &path);

} // namespace orchard
