// Defines PlaceHash, a hash for pointers to objects that are visited in the order in which they were created.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

/// std::hash for all keys except pointers.
template <class KEY> struct PlaceHash : std::hash<KEY> {};

/// Neighbours in memory are neighbours in the table, so visiting objects in creation order also walks the table in
/// order and causes few cache misses.
template <class OBJECT> struct PlaceHash<OBJECT *> {
    std::size_t operator()(const OBJECT *object) const noexcept {
        constexpr int alignmentBits = 4; // of heap allocations
        return reinterpret_cast<std::uintptr_t>(object) >> alignmentBits;
    }
};
