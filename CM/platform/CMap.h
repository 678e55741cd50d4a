// Provides a hash map that iterates in the order in which its keys were inserted, so that results of an iteration
// are the same in every run. A thin value class over std::unordered_map, whose entries are linked in that order.
#pragma once

#include "CM/platform/PlaceHash.h"

#include <cstddef>
#include <iterator>
#include <unordered_map>
#include <utility>

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE> class CMap {
    struct Link;
    using Index = std::unordered_map<KEY, Link, PlaceHash<KEY>>;
    using Entry = std::pair<const KEY, Link>; // owned by the index; its address never changes
    struct Link {
        VALUE value{};
        Entry *previous = nullptr;
        Entry *next = nullptr;
    };

  public:
    /// A position in an iteration, or none. It is valid until its entry is removed.
    class POSITION {
      public:
        POSITION() = default;
        explicit operator bool() const { return entry_ != nullptr; }

      private:
        friend class CMap;
        explicit POSITION(const Entry *entry) : entry_(entry) {}
        const Entry *entry_ = nullptr;
    };

    /// For range-based for loops; elements are pairs of references to key and value.
    class const_iterator {
      public:
        using value_type = std::pair<const KEY &, const VALUE &>;
        using difference_type = std::ptrdiff_t;
        using iterator_category = std::input_iterator_tag;

        const_iterator() = default;
        value_type operator*() const { return {entry_->first, entry_->second.value}; }
        const_iterator &operator++() {
            entry_ = entry_->second.next;
            return *this;
        }
        const_iterator operator++(int) { return std::exchange(*this, const_iterator(entry_->second.next)); }
        friend bool operator==(const const_iterator &, const const_iterator &) = default;

      private:
        friend class CMap;
        explicit const_iterator(const Entry *entry) : entry_(entry) {}
        const Entry *entry_ = nullptr;
    };

    /// The block size is a hint about growth; it has no effect.
    explicit CMap(int blockSize = 10) { static_cast<void>(blockSize); }
    CMap(const CMap &) = delete;
    CMap &operator=(const CMap &) = delete;
    ~CMap() = default;

    /// Reserves room for a number of keys.
    void InitHashTable(int keys) { index_.reserve(static_cast<std::size_t>(keys)); }

    [[nodiscard]] int GetCount() const { return static_cast<int>(index_.size()); }
    [[nodiscard]] bool IsEmpty() const { return index_.empty(); }

    /// Returns whether the key exists; only then assigns `value`.
    bool Lookup(ARG_KEY key, VALUE &value) const {
        const auto found = index_.find(key);
        if (found == index_.end()) {
            return false;
        }
        value = found->second.value;
        return true;
    }
    void SetAt(ARG_KEY key, ARG_VALUE value) { (*this)[key] = value; }
    /// Returns the value of the key; a new key gets a default value.
    VALUE &operator[](ARG_KEY key) {
        const auto [place, isNew] = index_.try_emplace(key);
        if (isNew) {
            append(*place);
        }
        return place->second.value;
    }
    /// Returns whether the key existed.
    bool RemoveKey(ARG_KEY key) {
        const auto found = index_.find(key);
        if (found == index_.end()) {
            return false;
        }
        takeOut(*found);
        index_.erase(found);
        return true;
    }
    void RemoveAll() {
        index_.clear();
        first_ = last_ = nullptr;
    }

    [[nodiscard]] POSITION GetStartPosition() const { return POSITION(first_); }
    /// Assigns the entry at `position`, which advances to the next one, or to none at the end.
    void GetNextAssoc(POSITION &position, KEY &key, VALUE &value) const {
        const Entry &entry = *position.entry_;
        key = entry.first;
        value = entry.second.value;
        position = POSITION(entry.second.next);
    }

    [[nodiscard]] const_iterator begin() const { return const_iterator(first_); }
    [[nodiscard]] const_iterator end() const { return {}; }

  private:
    void append(Entry &entry) {
        entry.second.previous = last_;
        (last_ == nullptr ? first_ : last_->second.next) = &entry;
        last_ = &entry;
    }
    void takeOut(const Entry &entry) {
        const Link &link = entry.second;
        (link.previous == nullptr ? first_ : link.previous->second.next) = link.next;
        (link.next == nullptr ? last_ : link.next->second.previous) = link.previous;
    }

    Index index_;
    Entry *first_ = nullptr;
    Entry *last_ = nullptr;
};
