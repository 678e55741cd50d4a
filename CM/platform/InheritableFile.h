// A file that a child process is to write to.
#pragma once

#include "CM/platform/CString.h"

namespace platform {

/// Owns an open file descriptor that a child process is given as its output (ChildOptions::outputDescriptor), and
/// that no other child holds; closes it at the end of its life.
class InheritableFile {
  public:
    /// Opens the file for writing; one that exists is emptied. The name is taken as it is, blanks included. It
    /// never waits: a named pipe that nobody reads can't be opened.
    explicit InheritableFile(const CString &path);
    ~InheritableFile();
    InheritableFile(const InheritableFile &) = delete;
    InheritableFile &operator=(const InheritableFile &) = delete;

    /// The descriptor, or -1 if the file could not be opened.
    [[nodiscard]] int handle() const { return handle_; }

  private:
    int handle_;
};

} // namespace platform
