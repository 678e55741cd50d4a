#include "orchard/model/ElementId.h"

#include <random>

namespace orchard {

namespace {

/// The mixing step of the SplitMix64 generator.
std::uint64_t mixed(std::uint64_t value) {
    value += 0x9E3779B97F4A7C15ULL;
    value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9ULL;
    value = (value ^ (value >> 27U)) * 0x94D049BB133111EBULL;
    return value ^ (value >> 31U);
}

constexpr bool isGroupEnd(std::size_t at) { return at == 8 || at == 13 || at == 18 || at == 23; }

int digitValue(char digit) {
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    if (digit >= 'a' && digit <= 'f') {
        return digit - 'a' + 10;
    }
    if (digit >= 'A' && digit <= 'F') {
        return digit - 'A' + 10;
    }
    return -1;
}

} // namespace

ElementId ElementId::random() {
    static thread_local std::random_device device;
    const auto word = [] { return (std::uint64_t{device()} << 32U) | device(); };
    ElementId id{word(), word()};
    if (id.empty()) {
        id.low = 1;
    }
    return id;
}

ElementId ElementId::numbered(std::uint64_t number) { return {mixed(number), mixed(~number)}; }

std::optional<ElementId> ElementId::parse(std::string_view text) {
    if (text.size() != 36) {
        return std::nullopt;
    }
    ElementId id;
    unsigned digits = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (isGroupEnd(at)) {
            if (text[at] != '-') {
                return std::nullopt;
            }
            continue;
        }
        const int value = digitValue(text[at]);
        if (value < 0) {
            return std::nullopt;
        }
        std::uint64_t &half = digits < 16 ? id.high : id.low;
        half = (half << 4U) | static_cast<std::uint64_t>(value);
        ++digits;
    }
    return id.empty() ? std::nullopt : std::optional(id);
}

std::string ElementId::text() const {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text(36, '-');
    unsigned written = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!isGroupEnd(at)) {
            const std::uint64_t half = written < 16 ? high : low;
            text[at] = digits[(half >> (60U - 4U * (written % 16U))) & 0xFU];
            ++written;
        }
    }
    return text;
}

} // namespace orchard

std::size_t std::hash<orchard::ElementId>::operator()(const orchard::ElementId &id) const noexcept {
    static const orchard::ElementId seed = orchard::ElementId::random();
    using orchard::mixed;
    return static_cast<std::size_t>(mixed(mixed(id.high ^ seed.high) + (id.low ^ seed.low)));
}
