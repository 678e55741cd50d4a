// Stores the texts of many small items together in blocks: with millions of items, separate allocations would take
// most of the time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string_view>

class ItemTexts {
  public:
    /// Copies the parts one after the other, with nothing in between. The returned pointer keeps the complete
    /// block alive, which contains some hundred texts.
    std::shared_ptr<const char> keep(std::initializer_list<std::string_view> parts) {
        std::size_t size = 0;
        for (const std::string_view part : parts) {
            size += part.size();
        }
        if (size > room_) {
            room_ = std::max(size, blockSize);
            block_ = std::make_shared_for_overwrite<char[]>(room_);
            next_ = block_.get();
        }
        char *const text = next_;
        for (const std::string_view part : parts) {
            next_ = std::ranges::copy(part, next_).out;
        }
        room_ -= size;
        return {block_, text};
    }

  private:
    static constexpr std::size_t blockSize = std::size_t{16} * 1024;
    std::shared_ptr<char[]> block_;
    char *next_ = nullptr;
    std::size_t room_ = 0;
};
