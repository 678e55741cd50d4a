#include "orchard/model/ElementId.h"

#include <array>
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

/// The values of hexadecimal digits, indexed by character; noDigit for all others.
constexpr std::uint8_t noDigit = 0x80;
constexpr auto digitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(noDigit);
    for (std::uint8_t digit = 0; digit < 16; ++digit) {
        values[static_cast<std::uint8_t>("0123456789abcdef"[digit])] = digit;
        values[static_cast<std::uint8_t>("0123456789ABCDEF"[digit])] = digit;
    }
    return values;
}();

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
    if (text[8] != '-' || text[13] != '-' || text[18] != '-' || text[23] != '-') {
        return std::nullopt;
    }
    // Reading a large model calls this several hundred thousand times.
    std::uint8_t seen = 0;
    const auto append = [&](std::uint64_t &half, std::size_t from, std::size_t to) {
        for (std::size_t at = from; at < to; ++at) {
            const std::uint8_t value = digitValues[static_cast<unsigned char>(text[at])];
            seen = static_cast<std::uint8_t>(seen | value);
            half = (half << 4U) | (value & 0xFU);
        }
    };
    ElementId id;
    append(id.high, 0, 8);
    append(id.high, 9, 13);
    append(id.high, 14, 18);
    append(id.low, 19, 23);
    append(id.low, 24, 36);
    if ((seen & noDigit) != 0) {
        return std::nullopt;
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
