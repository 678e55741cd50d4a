#include "CM/platform/Files.h"

#include "CM/platform/posix/Descriptor.h"
#include "CM/platform/posix/NativePath.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace platform {

using posix::Descriptor;
using posix::nativePath;

namespace {

std::optional<struct stat> stateOf(const CString &path) {
    struct stat state {};
    if (::stat(nativePath(path).c_str(), &state) != 0) {
        return std::nullopt;
    }
    return state;
}

} // namespace

char pathSeparator() { return '/'; }

bool fileExists(const CString &path) { return stateOf(path).has_value(); }

bool isRegularFile(const CString &path) {
    const auto state = stateOf(path);
    return state && S_ISREG(state->st_mode);
}

bool isDirectory(const CString &path) {
    const auto state = stateOf(path);
    return state && S_ISDIR(state->st_mode);
}

bool canStat(const CString &path) { return stateOf(path).has_value(); }

bool sameFile(const CString &one, const CString &other) {
    const auto first = stateOf(one);
    const auto second = stateOf(other);
    return first && second && first->st_dev == second->st_dev && first->st_ino == second->st_ino;
}

bool hasWritePermission(const CString &path) {
    const auto state = stateOf(path);
    return state && (state->st_mode & S_IWUSR) != 0;
}

std::optional<std::string> readFile(const CString &path, std::size_t limit) {
    const Descriptor file(::open(nativePath(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat state {};
    if (!file.isOpen() || ::fstat(file.get(), &state) != 0) {
        return std::nullopt;
    }
    if (!S_ISREG(state.st_mode)) {
        errno = S_ISDIR(state.st_mode) ? EISDIR : EINVAL;
        return std::nullopt;
    }
    std::string text;
    constexpr std::size_t step = std::size_t{64} * 1024;
    while (text.size() < limit) {
        const auto before = text.size();
        text.resize(before + std::min(step, limit - before));
        const ssize_t got = ::read(file.get(), text.data() + before, text.size() - before);
        text.resize(before + (got > 0 ? static_cast<std::size_t>(got) : 0));
        if (got == 0) {
            break;
        }
        if (got < 0 && errno != EINTR) {
            return std::nullopt;
        }
    }
    return text;
}

bool moveFile(const CString &from, const CString &to) {
    if (std::rename(nativePath(from).c_str(), nativePath(to).c_str()) == 0) {
        return true;
    }
    return errno == EXDEV && copyFile(from, to, false) && deleteFile(from);
}

bool deleteFile(const CString &path) { return ::unlink(nativePath(path).c_str()) == 0; }

bool makeWritable(const CString &path) {
    const auto state = stateOf(path);
    return state && ::chmod(nativePath(path).c_str(), (state->st_mode & 07777U) | S_IWUSR) == 0;
}

CString currentDirectory() {
    std::string path(256, '\0');
    while (::getcwd(path.data(), path.size()) == nullptr) {
        if (errno != ERANGE) {
            return {};
        }
        path.resize(path.size() * 2);
    }
    return {path.c_str()};
}

bool setCurrentDirectory(const CString &path) {
    const std::string native = nativePath(path);
    if (!native.empty() && native != path.str()) {
        if (::chdir(path.c_str()) == 0) {
            return true;
        }
        if (errno != ENOENT && errno != ENOTDIR) {
            return false;
        }
    }
    return ::chdir(native.c_str()) == 0;
}

CString lastErrorText() { return {std::generic_category().message(errno)}; }

} // namespace platform
