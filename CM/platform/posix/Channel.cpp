#include "CM/platform/posix/Channel.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <poll.h>
#include <unistd.h>

namespace platform::posix {

namespace {

constexpr std::size_t chunkSize = std::size_t{64} * 1024;
constexpr std::size_t longChunkSize = std::size_t{1} << 20; // as much as a pipe may hold without privileges
constexpr int drainedChunks = 64;                           // more than a pipe holds
constexpr std::size_t longText = std::size_t{1} << 20;
constexpr std::size_t roomForLongText = std::size_t{1} << 30; // unused room costs nothing

/// Enlarges the pipe, so that child and reader wake each other less often. If the system refuses, the pipe is
/// unchanged.
void widen([[maybe_unused]] int pipe) {
#ifdef F_SETPIPE_SZ
    static_cast<void>(::fcntl(pipe, F_SETPIPE_SZ, static_cast<int>(longChunkSize)));
#endif
}

/// A long text grows in large steps: each step copies all of it.
void makeRoom(std::string &text, std::size_t more) {
    if (text.size() < longText || text.capacity() - text.size() >= more) {
        return;
    }
    for (const std::size_t room : {std::max(roomForLongText, 4 * text.size()), 4 * text.size()}) {
        try {
            text.reserve(room);
            return;
        } catch (const std::bad_alloc &) { // NOLINT(bugprone-empty-catch): the text grows as far as it can
        }
    }
}

} // namespace

void Channel::read() {
    const bool becomesLong = chunkSize_ == chunkSize && text.size() >= longText;
    if (chunk_ == nullptr || becomesLong) {
        chunkSize_ = becomesLong ? longChunkSize : chunkSize;
        chunk_ = std::make_unique_for_overwrite<char[]>(chunkSize_); // NOLINT(*-avoid-c-arrays): never initialized
    }
    if (becomesLong) {
        widen(end.get());
    }
    const auto count = ::read(end.get(), chunk_.get(), chunkSize_);
    if (count > 0) {
        makeRoom(text, static_cast<std::size_t>(count));
        text.append(chunk_.get(), static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {
        end.reset();
    }
}

void Channel::drain() {
    for (int chunks = 0; end.isOpen() && chunks < drainedChunks; ++chunks) {
        pollfd waited{end.get(), POLLIN, 0};
        if (::poll(&waited, 1, 0) <= 0) {
            return;
        }
        read();
    }
}

} // namespace platform::posix
