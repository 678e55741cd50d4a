// Owns an open file descriptor.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace platform::posix {

class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor &&other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept {
        if (this != &other) {
            reset();
            number_ = std::exchange(other.number_, -1);
        }
        return *this;
    }
    ~Descriptor() { reset(); }

    [[nodiscard]] int get() const { return number_; }
    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    /// Closes the descriptor. Returns false if earlier writes could not be stored, which a network file system may
    /// report only now.
    [[nodiscard]] bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }
    /// Closes the descriptor and preserves errno, which may hold the reason for an earlier failure.
    void reset() {
        if (number_ >= 0) {
            const int kept = errno;
            ::close(std::exchange(number_, -1));
            errno = kept;
        }
    }

  private:
    int number_ = -1;
};

} // namespace platform::posix
