// ItemTexts: the texts of many small items, kept together in blocks: there may be millions of items, and most of
// the time of making them would go to memory.
#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string_view>

class ItemTexts {
  public:
    /// Copies the parts, one behind the other without anything in between. What comes back keeps its block, which
    /// holds some hundred texts, as long as it is held itself.
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
