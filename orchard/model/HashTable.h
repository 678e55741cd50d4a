// Finds objects by the hash of something that they know of themselves. The table holds nothing but hashes and
// pointers, since a large model has many hundred thousand elements, and looks at an object only where the whole
// hash is the same.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orchard {

template <class OBJECT> class HashTable {
  public:
    [[nodiscard]] std::size_t size() const { return used_; }

    /// The first object with the hash that `fits` says yes to, or null.
    template <class FITS> [[nodiscard]] OBJECT *find(std::uint64_t hash, FITS &&fits) const {
        if (places_.empty()) {
            return nullptr;
        }
        for (std::size_t at = hash & mask(); places_[at].object != nullptr; at = (at + 1) & mask()) {
            if (places_[at].hash == hash && fits(*places_[at].object)) {
                return places_[at].object;
            }
        }
        return nullptr;
    }

    /// Adds an object; whether it is there already is the caller's to know.
    void add(std::uint64_t hash, OBJECT &object) {
        if ((used_ + 1) * 4 > places_.size() * 3) {
            grow();
        }
        put({hash, &object});
        ++used_;
    }

    /// Takes the very object out; false if it isn't there under this hash.
    bool remove(std::uint64_t hash, const OBJECT &object) {
        if (places_.empty()) {
            return false;
        }
        std::size_t hole = hash & mask();
        while (places_[hole].object != &object) {
            if (places_[hole].object == nullptr) {
                return false;
            }
            hole = (hole + 1) & mask();
        }
        // Entries behind the hole move up unless that would put them in front of their home.
        for (std::size_t at = (hole + 1) & mask(); places_[at].object != nullptr; at = (at + 1) & mask()) {
            const std::size_t home = places_[at].hash & mask();
            if (((at - home) & mask()) >= ((at - hole) & mask())) {
                places_[hole] = places_[at];
                hole = at;
            }
        }
        places_[hole] = {};
        --used_;
        return true;
    }

    template <class VISIT> void forEach(VISIT &&visit) const {
        for (const Place &place : places_) {
            if (place.object != nullptr) {
                visit(*place.object);
            }
        }
    }

  private:
    struct Place {
        std::uint64_t hash = 0;
        OBJECT *object = nullptr;
    };

    [[nodiscard]] std::size_t mask() const { return places_.size() - 1; }

    void put(const Place &place) {
        std::size_t at = place.hash & mask();
        while (places_[at].object != nullptr) {
            at = (at + 1) & mask();
        }
        places_[at] = place;
    }

    void grow() {
        std::vector<Place> old(places_.empty() ? 64 : places_.size() * 2);
        old.swap(places_);
        for (const Place &place : old) {
            if (place.object != nullptr) {
                put(place);
            }
        }
    }

    std::vector<Place> places_; // open addressing, a power of two long, at most three quarters full
    std::size_t used_ = 0;
};

} // namespace orchard
