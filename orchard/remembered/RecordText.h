// Writes and reads numbers and texts in sequence, in a file that only this machine uses.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

namespace orchard {

class RecordWriter {
  public:
    template <class VALUE> void plain(const VALUE &value) {
        static_assert(std::is_trivially_copyable_v<VALUE>);
        char bytes[sizeof value];
        std::memcpy(bytes, &value, sizeof value);
        text_.append(bytes, sizeof bytes);
    }
    void text(std::string_view text) {
        plain(static_cast<std::uint32_t>(text.size()));
        text_ += text;
    }
    [[nodiscard]] std::string &written() { return text_; }

  private:
    std::string text_;
};

/// Never reads past the end, whatever the text contains: missing data reads as zero, and isComplete() returns
/// false.
class RecordReader {
  public:
    explicit RecordReader(std::string_view text) : rest_(text) {}

    template <class VALUE> [[nodiscard]] VALUE plain() {
        static_assert(std::is_trivially_copyable_v<VALUE>);
        VALUE value{};
        const std::string_view bytes = take(sizeof value);
        if (complete_) {
            std::memcpy(&value, bytes.data(), sizeof value);
        }
        return value;
    }
    /// A view into the text passed to the constructor.
    [[nodiscard]] std::string_view text() { return take(plain<std::uint32_t>()); }
    [[nodiscard]] std::string_view rest() const { return rest_; }
    [[nodiscard]] bool isComplete() const { return complete_; }

  private:
    [[nodiscard]] std::string_view take(std::size_t bytes) {
        complete_ = complete_ && bytes <= rest_.size();
        if (!complete_) {
            return {};
        }
        const std::string_view taken = rest_.substr(0, bytes);
        rest_.remove_prefix(bytes);
        return taken;
    }

    std::string_view rest_;
    bool complete_ = true;
};

} // namespace orchard
