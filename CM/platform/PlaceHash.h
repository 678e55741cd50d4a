// PlaceHash: a hash for tables whose keys are pointers to objects that were made, and are visited, one after the
// other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

/// That of the standard for all keys but pointers.
template <class KEY> struct PlaceHash : std::hash<KEY> {};

/// Neighbours in memory become neighbours in the table, so that going through many objects in the order of their
/// making goes through the table in order, too, and doesn't wait for memory at each step.
template <class OBJECT> struct PlaceHash<OBJECT *> {
    std::size_t operator()(const OBJECT *object) const noexcept {
        constexpr int alignmentBits = 4; // of what comes from the heap
        return reinterpret_cast<std::uintptr_t>(object) >> alignmentBits;
    }
};
