// Addresses a property by subject, metaclass and name, ignoring the case of ASCII letters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orchard {

struct PropertyKey {
    std::string_view subject;
    std::string_view metaclass;
    std::string_view name;

    /// Equal keys have equal hashes.
    [[nodiscard]] std::uint64_t hash() const noexcept;
    friend bool operator==(const PropertyKey &left, const PropertyKey &right) noexcept;
};

struct PropertyKeyHash {
    std::size_t operator()(const PropertyKey &key) const noexcept { return key.hash(); }
};

} // namespace orchard
