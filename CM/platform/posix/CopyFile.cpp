#include "CM/platform/Files.h"

#include "CM/platform/posix/Descriptor.h"
#include "CM/platform/posix/FileBeside.h"
#include "CM/platform/posix/NativePath.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

using posix::Descriptor;
using posix::nativePath;

namespace {

bool copyContents(int from, int to) {
    std::array<char, std::size_t{64} * 1024>
        chunk; // NOLINT(cppcoreguidelines-pro-type-member-init): read fills it
    while (true) {
        const auto count = ::read(from, chunk.data(), chunk.size());
        if (count == 0) {
            return true;
        }
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0 || !posix::writeAll(to, {chunk.data(), static_cast<std::size_t>(count)})) {
            return false;
        }
    }
}

bool isSameFile(const struct stat &source, const std::string &target) {
    struct stat state {};
    return ::stat(target.c_str(), &state) == 0 && state.st_dev == source.st_dev && state.st_ino == source.st_ino;
}

} // namespace

bool copyFile(const CString &from, const CString &to, bool failIfExists) {
    const Descriptor source(::open(nativePath(from).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat state {};
    if (!source.isOpen() || ::fstat(source.get(), &state) != 0) {
        return false;
    }
    if (!S_ISREG(state.st_mode)) {
        errno = S_ISDIR(state.st_mode) ? EISDIR : EINVAL;
        return false;
    }
    const std::string target = failIfExists ? nativePath(to) : posix::behindLink(nativePath(to));
    if (isSameFile(state, target)) {
        errno = EEXIST;
        return false;
    }
    if (isDirectory({target})) {
        errno = EISDIR;
        return false;
    }
    posix::FileBeside copy(target);
    if (!copy.isOpen() || !copyContents(source.get(), copy.get())) {
        return false;
    }
    const std::array<timespec, 2> times{state.st_atim, state.st_mtim};
    if (::futimens(copy.get(), times.data()) != 0 || ::fchmod(copy.get(), state.st_mode & 0777U) != 0 ||
        !copy.flush()) {
        return false;
    }
    return failIfExists ? copy.becomeTarget() : copy.replaceTarget();
}

} // namespace platform
