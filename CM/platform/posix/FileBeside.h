// A file that is written beside another one, and then takes its place in one step.
#pragma once

#include "CM/platform/posix/Descriptor.h"

#include <string>
#include <string_view>

namespace platform::posix {

/// Is removed at the end unless it took the target's place. A call that fails returns false and leaves the reason
/// in errno.
class FileBeside {
  public:
    explicit FileBeside(std::string target);
    ~FileBeside();
    FileBeside(const FileBeside &) = delete;
    FileBeside &operator=(const FileBeside &) = delete;

    [[nodiscard]] bool isOpen() const { return file_.isOpen(); }
    [[nodiscard]] int get() const { return file_.get(); }
    /// Writes to the disk what was written, so that after a crash the name can't exist without it. Some file
    /// systems can't.
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

/// All of the text, however many calls that takes; on failure the reason is in errno.
[[nodiscard]] bool writeAll(int file, std::string_view text);

/// The file that a link leads to, so that the link stays one when the file is replaced; for any other path the
/// path.
[[nodiscard]] std::string behindLink(const std::string &path);

} // namespace platform::posix
