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
    /// Closes it; false if what was written before could not be stored, as a network may find out only now.
    [[nodiscard]] bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }
    /// Closes it; errno is unchanged, so that the reason of an earlier failure survives.
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
