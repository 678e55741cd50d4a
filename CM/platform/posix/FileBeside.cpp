#include "CM/platform/posix/FileBeside.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <utility>

namespace platform::posix {

namespace {

/// Hidden, and short enough beside the longest name.
std::string patternBeside(const std::string &target) {
    constexpr std::size_t longest = 200;
    const std::size_t name = target.rfind('/') + 1; // no separator: 0
    return target.substr(0, name) + '.' + target.substr(name, longest) + ".XXXXXX";
}

} // namespace

FileBeside::FileBeside(std::string target) : target_(std::move(target)), name_(patternBeside(target_)) {
    file_ = Descriptor(::mkostemp(name_.data(), O_CLOEXEC));
    present_ = file_.isOpen();
}

FileBeside::~FileBeside() {
    if (present_) {
        const int kept = errno;
        ::unlink(name_.c_str());
        errno = kept;
    }
}

bool FileBeside::flush() { return ::fsync(get()) == 0 || errno == EINVAL || errno == ENOTSUP; }

bool FileBeside::replaceTarget() {
    present_ = std::rename(name_.c_str(), target_.c_str()) != 0;
    return !present_;
}

bool FileBeside::becomeTarget() {
    if (::link(name_.c_str(), target_.c_str()) == 0) {
        return true; // the other name goes with this object
    }
    if (errno == EEXIST) {
        return false;
    }
    // A file system without links: the look and the step can't be one.
    struct stat state {};
    if (::lstat(target_.c_str(), &state) == 0) {
        errno = EEXIST;
        return false;
    }
    return replaceTarget();
}

bool writeAll(int file, std::string_view text) {
    while (!text.empty()) {
        const auto written = ::write(file, text.data(), text.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return true;
}

std::string behindLink(const std::string &path) {
    struct stat state {};
    if (::lstat(path.c_str(), &state) != 0 || !S_ISLNK(state.st_mode)) {
        return path;
    }
    const std::unique_ptr<char, void (*)(void *)> real(::realpath(path.c_str(), nullptr), std::free);
    return real == nullptr ? path : std::string(real.get());
}

} // namespace platform::posix
