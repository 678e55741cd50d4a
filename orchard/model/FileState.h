// Detects whether a file has changed without reading it.
#pragma once

#include <cstdint>
#include <sys/stat.h>

namespace orchard {

/// Writing to a file, replacing it or changing its mode gives it a new change time, which programs can't set
/// (POSIX, "File Times Update"). Some file systems keep no change times, see keepsChangeTimes().
struct FileState {
    std::uint64_t inode = 0;   ///< 0: unknown
    std::uint64_t size = 0;    ///< bytes
    std::int64_t modified = 0; ///< nanoseconds since 1970
    std::int64_t changed = 0;  ///< nanoseconds since 1970

    [[nodiscard]] static FileState of(const struct stat &state) {
        constexpr std::int64_t second = 1'000'000'000;
        return {state.st_ino, static_cast<std::uint64_t>(state.st_size),
                state.st_mtim.tv_sec * second + state.st_mtim.tv_nsec,
                state.st_ctim.tv_sec * second + state.st_ctim.tv_nsec};
    }
    [[nodiscard]] bool isKnown() const { return inode != 0; }
    /// Whether the file system that contains the path is known to keep change times and to show them at once. FAT
    /// does not, and neither do file systems reached through a network or another program.
    [[nodiscard]] static bool keepsChangeTimes(const char *path);
    friend bool operator==(const FileState &, const FileState &) = default;
};

} // namespace orchard
