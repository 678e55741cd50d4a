// Defines a temporary file in the same directory as a target, which it can replace atomically.
#pragma once

#include "CM/platform/posix/Descriptor.h"

#include <string>
#include <string_view>

namespace platform::posix {

/// The file is deleted by the destructor unless it has replaced the target. A call that fails returns false and
/// leaves the reason in errno.
class FileBeside {
  public:
    explicit FileBeside(std::string target);
    ~FileBeside();
    FileBeside(const FileBeside &) = delete;
    FileBeside &operator=(const FileBeside &) = delete;

    [[nodiscard]] bool isOpen() const { return file_.isOpen(); }
    [[nodiscard]] int get() const { return file_.get(); }
    /// Flushes the file to disk, so that after a crash the name can't refer to missing contents. Also returns true
    /// on a file system that doesn't support this.
    [[nodiscard]] bool flush();
    [[nodiscard]] bool replaceTarget();
    /// Takes the target's place only if nothing is there, in one step.
    [[nodiscard]] bool becomeTarget();

  private:
    std::string target_;
    std::string name_;
    Descriptor file_;
    bool present_ = false;
};

/// Writes the complete text, with as many calls as needed. On failure the reason is in errno.
[[nodiscard]] bool writeAll(int file, std::string_view text);

/// Returns the target of a link, so that replacing the file keeps the link; returns any other path unchanged.
[[nodiscard]] std::string behindLink(const std::string &path);

} // namespace platform::posix
