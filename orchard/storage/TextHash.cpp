#include "orchard/storage/TextHash.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace orchard {

std::uint64_t hashOfText(std::string_view text) {
    constexpr std::uint64_t odd = 0x9E3779B97F4A7C15ULL;
    std::uint64_t hash = text.size() * odd;
    while (!text.empty()) {
        std::uint64_t word = 0;
        const std::size_t size = std::min(text.size(), sizeof word);
        std::memcpy(&word, text.data(), size);
        text.remove_prefix(size);
        hash = (hash ^ word) * odd;
        hash ^= hash >> 32U;
    }
    return hash;
}

} // namespace orchard
