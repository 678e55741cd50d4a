#include "CM/platform/InheritableFile.h"

#include "CM/platform/posix/NativePath.h"

#include <fcntl.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr mode_t readAndWriteForAll = 0666; // reduced by the mask of the process

/// Opens without waiting: opening a named pipe without a reader would block for ever, and fails instead. Writing
/// is as usual. Closed on exec, since its child gets a copy as standard output, and no other child may hold it
/// open.
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
