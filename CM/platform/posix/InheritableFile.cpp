#include "CM/platform/InheritableFile.h"

#include "CM/platform/posix/NativePath.h"

#include <fcntl.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr mode_t readAndWriteForAll = 0666; // the process's mask takes away from it

} // namespace

// No O_CLOEXEC: that the child inherits the descriptor is the purpose.
InheritableFile::InheritableFile(const CString &path)
    : handle_(::open(posix::nativePath(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC, readAndWriteForAll)) {}

InheritableFile::~InheritableFile() {
    if (handle_ >= 0) {
        ::close(handle_);
    }
}

} // namespace platform
