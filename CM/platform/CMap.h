// CMap: a hash map that is walked in the order in which its keys came in, so that what is made from a walk
// is the same in every run. A thin value class over the standard containers.
#pragma once

#include <list>
#include <optional>
#include <unordered_map>
#include <utility>

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE> class CMap {
    using Entry = std::pair<const KEY, VALUE>;
    using Entries = std::list<Entry>;

  public:
    /// A place in a walk, or none.
    class POSITION {
      public:
        POSITION() = default;
        explicit operator bool() const { return place_.has_value(); }

      private:
        friend class CMap;
        explicit POSITION(typename Entries::const_iterator place) : place_(place) {}
        std::optional<typename Entries::const_iterator> place_;
    };

    /// The block size is a hint of the caller's about growth; it has no effect on behaviour.
    explicit CMap(int blockSize = 10) { static_cast<void>(blockSize); }
    CMap(const CMap &) = delete;
    CMap &operator=(const CMap &) = delete;
    ~CMap() = default;

    [[nodiscard]] int GetCount() const { return static_cast<int>(index_.size()); }
    [[nodiscard]] bool IsEmpty() const { return index_.empty(); }

    /// True if the key is there; only then `value` is assigned.
    bool Lookup(ARG_KEY key, VALUE &value) const {
        const auto found = index_.find(key);
        if (found == index_.end()) {
            return false;
        }
        value = found->second->second;
        return true;
    }
    void SetAt(ARG_KEY key, ARG_VALUE value) { (*this)[key] = value; }
    /// The value of the key, made with its default if the key is new.
    VALUE &operator[](ARG_KEY key) {
        const auto [place, isNew] = index_.try_emplace(key);
        if (isNew) {
            place->second = entries_.emplace(entries_.end(), key, VALUE());
        }
        return place->second->second;
    }
    /// True if the key was there.
    bool RemoveKey(ARG_KEY key) {
        const auto found = index_.find(key);
        if (found == index_.end()) {
            return false;
        }
        entries_.erase(found->second);
        index_.erase(found);
        return true;
    }
    void RemoveAll() {
        index_.clear();
        entries_.clear();
    }

    [[nodiscard]] POSITION GetStartPosition() const { return at(entries_.begin()); }
    /// Gives the entry at `position`, which moves on, or to none at the end.
    void GetNextAssoc(POSITION &position, KEY &key, VALUE &value) const {
        key = (*position.place_)->first;
        value = (*position.place_)->second;
        position = at(std::next(*position.place_));
    }

    [[nodiscard]] auto begin() const { return entries_.begin(); }
    [[nodiscard]] auto end() const { return entries_.end(); }

  private:
    POSITION at(typename Entries::const_iterator place) const {
        return place == entries_.end() ? POSITION() : POSITION(place);
    }

    Entries entries_;
    std::unordered_map<KEY, typename Entries::iterator> index_;
};
