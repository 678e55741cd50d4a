#include "orchard/storage/AtomicFile.h"

#include "orchard/model/Paths.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace orchard {

namespace {

/// A file that grows past the process's limit raises a signal which would end the program. While one of these
/// lives it is held back in this thread and taken away at the end; the write call fails instead.
class SizeSignalHeld {
  public:
    SizeSignalHeld() {
        sigemptyset(&signal_);
        sigaddset(&signal_, SIGXFSZ);
        pthread_sigmask(SIG_BLOCK, &signal_, &before_);
    }
    ~SizeSignalHeld() {
        const timespec now{};
        if (sigismember(&before_, SIGXFSZ) == 0) {
            sigtimedwait(&signal_, nullptr, &now);
        }
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    SizeSignalHeld(const SizeSignalHeld &) = delete;
    SizeSignalHeld &operator=(const SizeSignalHeld &) = delete;

  private:
    sigset_t signal_{};
    sigset_t before_{};
};

/// The file being written; it is taken away again unless it was put in its place.
class Draft {
  public:
    enum Name { beside, itself };
    Draft(std::string path, Name name)
        : path_(std::move(path)),
          fd_(name == beside ? ::mkostemp(path_.data(), O_CLOEXEC)
                             : ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666)) {}
    ~Draft() {
        static_cast<void>(close());
        if (!path_.empty() && opened_) {
            ::unlink(path_.c_str());
        }
    }
    Draft(const Draft &) = delete;
    Draft &operator=(const Draft &) = delete;

    [[nodiscard]] bool isOpen() const { return fd_ >= 0; }
    [[nodiscard]] bool write(std::string_view text) {
        while (!text.empty()) {
            const ssize_t written = ::write(fd_, text.data(), text.size());
            if (written < 0 && errno == EINTR) {
                continue;
            }
            if (written <= 0) {
                return false;
            }
            text.remove_prefix(static_cast<std::size_t>(written));
        }
        return true;
    }
    /// Where a file system keeps no modes, or nobody may set them, the file is good without.
    [[nodiscard]] bool setMode(mode_t mode) {
        struct stat state {};
        const bool agrees = ::fstat(fd_, &state) == 0 && (state.st_mode & 07777U) == mode;
        return agrees || ::fchmod(fd_, mode) == 0 || errno == EPERM || errno == ENOTSUP;
    }
    [[nodiscard]] bool flush() { return ::fsync(fd_) == 0; }
    [[nodiscard]] bool close() {
        const int fd = std::exchange(fd_, -1);
        return fd < 0 || ::close(fd) == 0;
    }
    void stay() { path_.clear(); }
    [[nodiscard]] bool putInPlace(const std::string &target) {
        if (::rename(path_.c_str(), target.c_str()) != 0) {
            return false;
        }
        path_.clear();
        return true;
    }

  private:
    std::string path_;
    int fd_;
    bool opened_ = fd_ >= 0;
};

std::string linkTarget(const std::string &path) {
    struct stat state {};
    if (::lstat(path.c_str(), &state) != 0 || !S_ISLNK(state.st_mode)) {
        return path;
    }
    const std::unique_ptr<char, void (*)(void *)> real(::realpath(path.c_str(), nullptr), std::free);
    return real == nullptr ? path : std::string(real.get());
}

mode_t modeFor(const std::string &path) {
    struct stat state {};
    if (::stat(path.c_str(), &state) == 0) {
        return state.st_mode & 07777U;
    }
    const mode_t mask = ::umask(0); // can only be asked by setting it
    ::umask(mask);
    return 0666U & ~mask;
}

void flushDirectoryOf(const std::string &path) {
    const int fd = ::open(std::string(directoryOfPath(path)).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        ::fsync(fd); // some file systems can't; the file itself is safe by then
        ::close(fd);
    }
}

} // namespace

std::string writeWholeFile(const std::string &path, std::string_view text) {
    const SizeSignalHeld held;
    const std::string target = linkTarget(path);
    const std::string directory(directoryOfPath(target));
    const std::string name(fileOfPath(target).substr(0, 200));
    Draft draft((directory.empty() ? std::string(".") : directory) + "/." + name + ".XXXXXX", Draft::beside);
    const auto failed = [](const char *what) { return std::string(what) + ": " + std::strerror(errno); };
    if (!draft.isOpen()) {
        return failed("no file can be made beside it");
    }
    if (!draft.write(text)) {
        return failed("writing failed");
    }
    if (!draft.setMode(modeFor(target)) || !draft.flush()) {
        return failed("writing failed");
    }
    if (!draft.close()) {
        return failed("writing failed");
    }
    if (!draft.putInPlace(target)) {
        return failed("the new file can't take its place");
    }
    flushDirectoryOf(target);
    return {};
}

std::string writeNewFile(const std::string &path, std::string_view text) {
    const SizeSignalHeld held;
    Draft file(path, Draft::itself);
    if (!file.isOpen() || !file.write(text) || !file.close()) {
        return std::string("writing failed: ") + std::strerror(errno);
    }
    file.stay();
    return {};
}

bool isWriteProtected(const std::string &path) {
    struct stat state {};
    return ::stat(path.c_str(), &state) == 0 && (state.st_mode & S_IWUSR) == 0;
}

} // namespace orchard
