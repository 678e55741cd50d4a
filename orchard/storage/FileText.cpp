#include "orchard/storage/FileText.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orchard {

namespace {

class OpenFile {
  public:
    // Without waiting: a pipe in a file's place must not stop the program.
    explicit OpenFile(const std::string &path) : fd_(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    ~OpenFile() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;
    [[nodiscard]] int fd() const { return fd_; }

  private:
    int fd_;
};

} // namespace

FileRead FileText::read(const std::string &path, std::size_t limit) {
    text.clear();
    const OpenFile file(path);
    const auto failed = [this] {
        fault = std::string("the file can't be read: ") + std::strerror(errno);
        return FileRead::failed;
    };
    if (file.fd() < 0) {
        return errno == ENOENT || errno == ENOTDIR ? FileRead::missing : failed();
    }
    struct stat state {};
    if (::fstat(file.fd(), &state) != 0) {
        return failed();
    }
    if (!S_ISREG(state.st_mode)) {
        fault = "it is no regular file";
        return FileRead::failed;
    }
    readOnly = (state.st_mode & S_IWUSR) == 0;
    const auto size = static_cast<std::size_t>(state.st_size);
    if (size > limit) {
        fault = "the file is larger than " + std::to_string(limit >> 20U) + " MiB";
        return FileRead::failed;
    }
    // One byte more than the size is asked for, so that the end shows itself in the same call.
    text.resize(size + 1);
    std::size_t have = 0;
    while (have < text.size()) {
        const ssize_t got = ::read(file.fd(), text.data() + have, text.size() - have);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            return failed();
        }
        have += static_cast<std::size_t>(got);
        if (got == 0 || have == size) {
            break;
        }
    }
    text.resize(std::min(have, size));
    return FileRead::done;
}

Problem problemAt(const std::string &file, std::string_view text, const Fault &fault) {
    const std::string_view before = text.substr(0, std::min(fault.offset, text.size()));
    const auto lines = std::ranges::count(before, '\n');
    const std::size_t lineStart = before.rfind('\n') + 1; // no line end: 0
    return {file, static_cast<int>(lines) + 1, static_cast<int>(before.size() - lineStart) + 1, fault.text};
}

} // namespace orchard
