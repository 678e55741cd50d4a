// Identifies a model element: 128 random bits, written as five groups of hexadecimal digits.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orchard {

struct ElementId {
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    /// Returns a new identifier from the system's source of random numbers.
    [[nodiscard]] static ElementId random();
    /// Returns the identifier for a number: the same in every run, spread over the entire range.
    [[nodiscard]] static ElementId numbered(std::uint64_t number);
    /// Reads "8-4-4-4-12" digits of either case; returns nothing for any other text or for the all-zero
    /// identifier.
    [[nodiscard]] static std::optional<ElementId> parse(std::string_view text);

    [[nodiscard]] std::string text() const;
    [[nodiscard]] bool empty() const { return high == 0 && low == 0; }
    friend auto operator<=>(const ElementId &, const ElementId &) = default; // NOLINT(modernize-use-nullptr)
};

} // namespace orchard

template <> struct std::hash<orchard::ElementId> {
    /// Seeded differently in each process: a file may contain identifiers chosen to collide.
    std::size_t operator()(const orchard::ElementId &id) const noexcept;
};
