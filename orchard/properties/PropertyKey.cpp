#include "orchard/properties/PropertyKey.h"

#include "CM/platform/CString.h"

#include <cstring>

namespace orchard {
namespace {

constexpr std::uint64_t caseBits = 0x2020'2020'2020'2020U;
constexpr std::uint64_t multiplier = 0x9e37'79b9'7f4a'7c15U;

/// Mixes eight bytes at a time. Sets the bit that distinguishes small letters from capitals in every byte, so some
/// punctuation characters get equal hashes, too; that costs a comparison at most.
std::uint64_t mix(std::uint64_t hash, std::string_view text) noexcept {
    std::size_t at = 0;
    for (; at + 8 <= text.size(); at += 8) {
        std::uint64_t block = 0;
        std::memcpy(&block, text.data() + at, 8);
        hash = (hash ^ (block | caseBits)) * multiplier;
        hash ^= hash >> 29U;
    }
    std::uint64_t rest = 0;
    if (at < text.size()) { // an empty view may have no data
        std::memcpy(&rest, text.data() + at, text.size() - at);
    }
    hash = (hash ^ (rest | caseBits) ^ text.size()) * multiplier;
    return hash ^ (hash >> 32U);
}

bool equals(std::string_view left, std::string_view right) noexcept {
    return left.size() == right.size() && (left == right || NoCaseEqual()(left, right));
}

} // namespace

std::uint64_t PropertyKey::hash() const noexcept { return mix(mix(mix(multiplier, subject), metaclass), name); }

bool operator==(const PropertyKey &left, const PropertyKey &right) noexcept {
    return equals(left.name, right.name) && equals(left.metaclass, right.metaclass) &&
           equals(left.subject, right.subject);
}

} // namespace orchard
