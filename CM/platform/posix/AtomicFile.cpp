#include "CM/platform/AtomicFile.h"

#include "CM/platform/posix/FileBeside.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>

namespace platform {

namespace {

/// Holds back the signal of a file that grows past the process's limit, which would end the program, in this
/// thread and removes it at the end; the write call fails instead.
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

std::string failed(const char *what) { return std::string(what) + ": " + std::strerror(errno); }

mode_t modeFor(const std::string &path) {
    struct stat state {};
    if (::stat(path.c_str(), &state) == 0) {
        return state.st_mode & 07777U;
    }
    const mode_t mask = ::umask(0); // can only be asked by setting it
    ::umask(mask);
    return 0666U & ~mask;
}

/// Where a file system keeps no modes, or nobody may set them, the file is good without.
bool setMode(int file, mode_t mode) {
    struct stat state {};
    const bool agrees = ::fstat(file, &state) == 0 && (state.st_mode & 07777U) == mode;
    return agrees || ::fchmod(file, mode) == 0 || errno == EPERM || errno == ENOTSUP;
}

/// Some file systems can't; the file itself is safe by then.
void flushDirectoryOf(const std::string &path) {
    const std::string directory = path.substr(0, path.rfind('/') + 1); // no separator: nothing
    const posix::Descriptor opened(
        ::open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.isOpen()) {
        ::fsync(opened.get());
    }
}

} // namespace

std::string writeWholeFile(const std::string &path, std::string_view text) {
    const SizeSignalHeld held;
    const std::string target = posix::behindLink(path);
    posix::FileBeside file(target);
    if (!file.isOpen()) {
        return failed("no file can be created beside it");
    }
    if (!posix::writeAll(file.get(), text) || !setMode(file.get(), modeFor(target)) || !file.flush()) {
        return failed("writing failed");
    }
    if (!file.replaceTarget()) {
        return failed("the new file can't take its place");
    }
    flushDirectoryOf(target);
    return {};
}

std::string writeNewFile(const std::string &path, std::string_view text) {
    const SizeSignalHeld held;
    posix::Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!file.isOpen()) {
        return failed("writing failed");
    }
    if (!posix::writeAll(file.get(), text) || !file.close()) {
        const std::string fault = failed("writing failed");
        ::unlink(path.c_str());
        return fault;
    }
    return {};
}

std::string flushFileSystemOf(const std::string &directory) {
    const posix::Descriptor opened(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return opened.isOpen() && ::syncfs(opened.get()) == 0 ? std::string() : failed("flushing failed");
}

} // namespace platform
