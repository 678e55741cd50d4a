#include "CM/platform/posix/Channel.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <new>
#include <poll.h>
#include <sys/mman.h>
#include <unistd.h>

namespace platform::posix {

namespace {

constexpr std::size_t chunkSize = std::size_t{64} * 1024;
constexpr int drainedChunks = 64; // more than a pipe holds
constexpr std::size_t longText = std::size_t{1} << 20;
constexpr std::size_t roomForLongText = std::size_t{1} << 30; // untouched room costs nothing

/// Lets the child run further ahead of the reader. Refused or unknown: the pipe stays as it is.
void widen([[maybe_unused]] int pipe) {
#ifdef F_SETPIPE_SZ
    constexpr int wide = 256 * 1024;
    static_cast<void>(::fcntl(pipe, F_SETPIPE_SZ, wide));
#endif
}

/// Asks for large pages under the room of a text: most of the time of a long listing went into the first touch of
/// small ones. Refused or unknown: nothing changes.
void askForLargePages([[maybe_unused]] std::string &text) {
#ifdef MADV_HUGEPAGE
    constexpr std::uintptr_t page = std::uintptr_t{2} << 20;          // a multiple of any page size that counts
    const auto start = reinterpret_cast<std::uintptr_t>(text.data()); // NOLINT(*-reinterpret-cast): to round it
    const std::uintptr_t from = (start + page - 1) / page * page;
    const std::uintptr_t to = (start + text.capacity()) / page * page;
    if (from < to) {
        static_cast<void>(::madvise(text.data() + (from - start), to - from, MADV_HUGEPAGE));
    }
#endif
}

/// A long text grows in large steps: each step copies all of it.
void makeRoom(Channel &channel, std::size_t more) {
    std::string &text = channel.text;
    if (text.size() < longText || text.capacity() - text.size() >= more) {
        return;
    }
    for (const std::size_t room : {std::max(roomForLongText, 4 * text.size()), 4 * text.size()}) {
        try {
            text.reserve(room);
            askForLargePages(text);
            widen(channel.end.get());
            return;
        } catch (const std::bad_alloc &) { // NOLINT(bugprone-empty-catch): the text grows as far as it can
        }
    }
}

} // namespace

void Channel::read() {
    std::array<char, chunkSize> chunk; // NOLINT(cppcoreguidelines-pro-type-member-init): read fills it
    const auto count = ::read(end.get(), chunk.data(), chunk.size());
    if (count > 0) {
        makeRoom(*this, static_cast<std::size_t>(count));
        text.append(chunk.data(), static_cast<std::size_t>(count));
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
