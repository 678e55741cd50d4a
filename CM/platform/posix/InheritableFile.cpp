#include "CM/platform/InheritableFile.h"

#include "CM/platform/posix/NativePath.h"

#include <fcntl.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr mode_t readAndWriteForAll = 0666; // the process's mask takes away from it

/// Without waiting: opening a named pipe that nobody reads would block for ever. It fails instead. Written to, the
/// file behaves as any other. Closed on exec, since the child that it is meant for gets a copy of it as its
/// standard output, and no other child is to hold it open.
int openForWriting(const char *path) {
    const int handle =
        ::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, readAndWriteForAll);
    if (handle >= 0) {
        ::fcntl(handle, F_SETFL, ::fcntl(handle, F_GETFL) & ~O_NONBLOCK);
    }
    return handle;
}

} // namespace

InheritableFile::InheritableFile(const CString &path) : handle_(openForWriting(posix::nativePath(path).c_str())) {}

InheritableFile::~InheritableFile() {
    if (handle_ >= 0) {
        ::close(handle_);
    }
}

} // namespace platform
