// Keeps other programs away with locks on ranges of a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// A part of a file that is locked as one; it may lie beyond the end of the file.
struct LockRange {
    std::uint64_t first = 0;
    std::uint64_t length = 1; ///< in bytes; 0: to the end, however far
};

/// Holds locks on ranges of one file. They exclude other programs and other objects of this class, and end with
/// the object or with the process, however that ends. Child processes don't get them. All programs must use this
/// class: the locks don't stop anybody from reading or writing the file.
class LockFile {
  public:
    enum class Kind {
        shared,   ///< beside others that are shared
        exclusive ///< alone
    };
    enum class Taken { yes, busy, failed };

    /// Names the file, which need not exist. The first lock makes it, empty, and readable and writable for all who
    /// have these rights on its directory. A link is not followed.
    explicit LockFile(std::string path);
    ~LockFile();
    LockFile(const LockFile &) = delete;
    LockFile &operator=(const LockFile &) = delete;

    /// Returns why the file can't be used for locks; empty as long as it can.
    [[nodiscard]] const std::string &fault() const { return fault_; }

    /// Locks the range, or changes what this object holds of it, without waiting. `failed` means that the system
    /// can't lock the file, for a reason that fault() returns from then on.
    [[nodiscard]] Taken tryLock(LockRange range, Kind kind);
    void unlock(LockRange range);
    /// Returns whether anybody else holds a lock on a part of the range.
    [[nodiscard]] bool isHeldByOther(LockRange range) const;

    /// Returns up to `size` bytes from the place on; fewer at the end of the file, or if it can't be read.
    [[nodiscard]] std::string read(std::uint64_t place, std::size_t size) const;
    /// Writes the text at the place. Returns whether that succeeded. The file is not flushed to the disk.
    bool write(std::uint64_t place, std::string_view text) const;

  private:
    enum class Missing { isMade, remains };
    /// Returns the open file, or a negative number, with the reason in errno.
    [[nodiscard]] int reach(Missing missing) const;

    std::string path_;
    mutable int file_ = -1;
    std::string fault_;
};

} // namespace platform
