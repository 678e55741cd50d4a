#include "CM/platform/LockFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {

struct flock lockOf(LockRange range, short type) {
    struct flock lock = {}; // l_pid has to be 0
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = static_cast<off_t>(range.first);
    lock.l_len = static_cast<off_t>(range.length);
    return lock;
}

/// The rights to read and write that the directory of the file grants: who may replace files there may lock, too.
mode_t rightsBeside(const std::string &path) {
    constexpr mode_t readAndWrite = 0666;
    const std::size_t slash = path.find_last_of('/');
    const std::string directory = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    struct stat facts = {};
    return ::stat(directory.c_str(), &facts) == 0 ? facts.st_mode & readAndWrite : readAndWrite;
}

} // namespace

LockFile::LockFile(std::string path) : path_(std::move(path)) {}

LockFile::~LockFile() {
    if (file_ >= 0) {
        ::close(file_);
    }
}

int LockFile::reach(Missing missing) const {
    constexpr int how = O_RDWR | O_CLOEXEC | O_NOFOLLOW;
    if (file_ < 0) {
        file_ = ::open(path_.c_str(), how);
    }
    if (file_ < 0 && errno == ENOENT && missing == Missing::isMade) {
        const mode_t rights = rightsBeside(path_);
        file_ = ::open(path_.c_str(), how | O_CREAT | O_EXCL, rights);
        if (file_ >= 0) {
            static_cast<void>(::fchmod(file_, rights)); // whatever the user's mask takes away
        } else if (errno == EEXIST) {
            file_ = ::open(path_.c_str(), how);
        }
    }
    return file_;
}

LockFile::Taken LockFile::tryLock(LockRange range, Kind kind) {
    struct flock lock = lockOf(range, kind == Kind::shared ? F_RDLCK : F_WRLCK);
    const int file = reach(Missing::isMade);
    // The lock belongs to the open file, not to the process: closing another descriptor of the file keeps it.
    if (file >= 0 && ::fcntl(file, F_OFD_SETLK, &lock) == 0) {
        return Taken::yes;
    }
    if (file >= 0 && (errno == EAGAIN || errno == EACCES || errno == EINTR)) {
        return Taken::busy;
    }
    fault_ = std::strerror(errno);
    return Taken::failed;
}

void LockFile::unlock(LockRange range) {
    if (file_ >= 0) {
        struct flock lock = lockOf(range, F_UNLCK);
        static_cast<void>(::fcntl(file_, F_OFD_SETLK, &lock));
    }
}

bool LockFile::isHeldByOther(LockRange range) const {
    struct flock lock = lockOf(range, F_WRLCK);
    const int file = reach(Missing::remains);
    return file >= 0 && ::fcntl(file, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

std::string LockFile::read(std::uint64_t place, std::size_t size) const {
    const int file = reach(Missing::remains);
    std::string text(size, '\0');
    std::size_t done = 0;
    while (file >= 0 && done < size) {
        const auto got = ::pread(file, text.data() + done, size - done, static_cast<off_t>(place + done));
        if (got > 0) {
            done += static_cast<std::size_t>(got);
        } else if (got == 0 || errno != EINTR) {
            break;
        }
    }
    text.resize(done);
    return text;
}

bool LockFile::write(std::uint64_t place, std::string_view text) const {
    while (!text.empty()) {
        const auto put = ::pwrite(file_, text.data(), text.size(), static_cast<off_t>(place));
        if (put > 0) {
            place += static_cast<std::uint64_t>(put);
            text.remove_prefix(static_cast<std::size_t>(put));
        } else if (put == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

} // namespace platform
