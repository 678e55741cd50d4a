#include "orchard/storage/FileText.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orchard {

// Non-blocking: a pipe in place of the file must not stop the program.
OpenFile::OpenFile(const std::string &path) : fd_(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
    struct stat state {};
    if (fd_ < 0 || ::fstat(fd_, &state) != 0) {
        isMissing_ = errno == ENOENT || errno == ENOTDIR;
        failed();
        return;
    }
    if (!S_ISREG(state.st_mode)) {
        fault_ = "it is not a regular file";
        return;
    }
    readOnly_ = (state.st_mode & S_IWUSR) == 0;
    size_ = static_cast<std::size_t>(state.st_size);
    state_ = FileState::of(state);
}

OpenFile::~OpenFile() {
    if (fd_ >= 0) {
        ::close(fd_);
    }
}

void OpenFile::failed() {
    fault_ = isMissing_ ? "it is missing" : std::string("it can't be read: ") + std::strerror(errno);
}

bool OpenFile::readUpTo(std::size_t bytes, std::string &text) {
    std::size_t have = text.size();
    // Asks for one byte more than the size, so that the same call detects the end of the file.
    text.resize(std::max(have, std::min(bytes, size_ + 1)));
    bool ended = false;
    while (have < text.size() && !ended) {
        const ssize_t got = ::read(fd_, text.data() + have, text.size() - have);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            failed();
            break;
        }
        have += static_cast<std::size_t>(got);
        ended = got == 0 || have == size_;
    }
    text.resize(have);
    return ended || have > size_;
}

FileRead FileText::read(const std::string &path, std::size_t limit) {
    text.clear();
    fault.clear();
    OpenFile file(path);
    const auto failed = [&](std::string why) {
        fault = std::move(why);
        return FileRead::failed;
    };
    if (file.isMissing()) {
        fault = "the file is missing";
        return FileRead::missing;
    }
    if (!file.fault().empty()) {
        return failed(file.fault());
    }
    readOnly = file.isReadOnly();
    state = file.state();
    if (file.size() > limit) {
        return failed("the file is larger than " + std::to_string(limit >> 20U) + " MiB");
    }
    static_cast<void>(file.readUpTo(file.size() + 1, text));
    if (!file.fault().empty()) {
        return failed(file.fault());
    }
    text.resize(std::min(text.size(), file.size()));
    return FileRead::done;
}

Problem problemAt(const std::string &file, std::string_view text, const Fault &fault) {
    const std::string_view before = text.substr(0, std::min(fault.offset, text.size()));
    const auto lines = std::ranges::count(before, '\n');
    const std::size_t lineStart = before.rfind('\n') + 1; // 0 if there is no line end
    return {file, static_cast<int>(lines) + 1, static_cast<int>(before.size() - lineStart) + 1, fault.text};
}

} // namespace orchard
