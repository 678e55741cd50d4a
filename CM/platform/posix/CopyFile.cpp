#include "CM/platform/Files.h"

#include "CM/platform/posix/Descriptor.h"
#include "CM/platform/posix/NativePath.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

using posix::Descriptor;
using posix::nativePath;

namespace {

/// A file beside the target under a name of its own, which is gone at the end unless it took the target's place.
class FileBeside {
  public:
    explicit FileBeside(const std::string &target) : name_(target + ".XXXXXX") {
        file_ = Descriptor(::mkostemp(name_.data(), O_CLOEXEC));
        present_ = file_.isOpen();
    }
    ~FileBeside() {
        if (present_) {
            const int kept = errno;
            ::unlink(name_.c_str());
            errno = kept;
        }
    }
    FileBeside(const FileBeside &) = delete;
    FileBeside &operator=(const FileBeside &) = delete;

    [[nodiscard]] bool isOpen() const { return file_.isOpen(); }
    [[nodiscard]] int get() const { return file_.get(); }

    bool replace(const std::string &target) {
        present_ = std::rename(name_.c_str(), target.c_str()) != 0;
        return !present_;
    }
    /// Takes the target's place only if nothing is there, in one step.
    bool become(const std::string &target) {
        if (::link(name_.c_str(), target.c_str()) == 0) {
            return true; // the other name goes with this object
        }
        if (errno == EEXIST) {
            return false;
        }
        // A file system without links: the look and the step can't be one.
        struct stat state {};
        if (::lstat(target.c_str(), &state) == 0) {
            errno = EEXIST;
            return false;
        }
        return replace(target);
    }

  private:
    std::string name_;
    Descriptor file_;
    bool present_ = false;
};

bool writeAll(int to, std::string_view rest) {
    while (!rest.empty()) {
        const auto written = ::write(to, rest.data(), rest.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        rest.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return true;
}

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
        if (count < 0 || !writeAll(to, {chunk.data(), static_cast<std::size_t>(count)})) {
            return false;
        }
    }
}

/// The file that a link at the target stands for, so that the link stays one.
std::string behindLink(const std::string &target) {
    struct stat state {};
    if (::lstat(target.c_str(), &state) != 0 || !S_ISLNK(state.st_mode)) {
        return target;
    }
    char *resolved = ::realpath(target.c_str(), nullptr);
    if (resolved == nullptr) {
        return target;
    }
    std::string path(resolved);
    std::free(resolved);
    return path;
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
    const std::string target = failIfExists ? nativePath(to) : behindLink(nativePath(to));
    if (isSameFile(state, target)) {
        errno = EEXIST;
        return false;
    }
    if (isDirectory({target})) {
        errno = EISDIR;
        return false;
    }
    FileBeside copy(target);
    if (!copy.isOpen() || !copyContents(source.get(), copy.get())) {
        return false;
    }
    const std::array<timespec, 2> times{state.st_atim, state.st_mtim};
    if (::futimens(copy.get(), times.data()) != 0 || ::fchmod(copy.get(), state.st_mode & 0777U) != 0) {
        return false;
    }
    // Else the name could stand after a crash before what is in the file does. Some file systems can't.
    if (::fsync(copy.get()) != 0 && errno != EINVAL && errno != ENOTSUP) {
        return false;
    }
    return failIfExists ? copy.become(target) : copy.replace(target);
}

} // namespace platform
