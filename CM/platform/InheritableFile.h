// Opens a file for a child process to write to.
#pragma once

#include "CM/platform/CString.h"

namespace platform {

/// Owns an open file descriptor for the output of one child process (ChildOptions::outputDescriptor), which no
/// other child inherits; the destructor closes it.
class InheritableFile {
  public:
    /// Opens the file for writing and empties an existing one. The name is literal, blanks included. Never blocks;
    /// opening a named pipe without a reader fails. Test: FileForAChild.DoesNotWaitForAReaderOfANamedPipe.
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
