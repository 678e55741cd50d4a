// Provides a doubly linked list whose positions remain valid while other entries are added and removed.
// A thin value class over std::list. ARG is the type for passing elements in.
#pragma once

#include <algorithm>
#include <list>
#include <optional>
#include <utility>

template <class TYPE, class ARG = const TYPE &> class CList {
  public:
    using value_type = TYPE;
    using const_iterator = typename std::list<TYPE>::const_iterator;
    using iterator = typename std::list<TYPE>::iterator;

    /// A position in the list, or none. It is valid until its entry is removed.
    class POSITION {
      public:
        POSITION() = default;
        POSITION(std::nullptr_t) {} // NOLINT(google-explicit-constructor)
        explicit operator bool() const { return place_.has_value(); }
        friend bool operator==(const POSITION &, const POSITION &) = default;

      private:
        friend class CList;
        explicit POSITION(iterator place) : place_(place) {}
        std::optional<iterator> place_;
    };

    /// The block size is a hint about growth; it has no effect.
    explicit CList(int blockSize = 10) { static_cast<void>(blockSize); }
    CList(std::initializer_list<TYPE> entries) : entries_(entries) {}

    [[nodiscard]] int GetCount() const { return static_cast<int>(entries_.size()); }
    [[nodiscard]] int GetSize() const { return GetCount(); }
    [[nodiscard]] bool IsEmpty() const { return entries_.empty(); }

    POSITION AddHead(ARG entry) { return POSITION(entries_.insert(entries_.begin(), entry)); }
    POSITION AddTail(ARG entry) { return POSITION(entries_.insert(entries_.end(), entry)); }
    /// Appends copies of the entries of another list.
    void AddTail(const CList &other) {
        const std::list<TYPE> copy = other.entries_;
        entries_.insert(entries_.end(), copy.begin(), copy.end());
    }

    /// The next four functions require a list that is not empty.
    TYPE RemoveHead() {
        TYPE entry = std::move(entries_.front());
        entries_.pop_front();
        return entry;
    }
    TYPE RemoveTail() {
        TYPE entry = std::move(entries_.back());
        entries_.pop_back();
        return entry;
    }
    [[nodiscard]] const TYPE &GetHead() const { return entries_.front(); }
    [[nodiscard]] const TYPE &GetTail() const { return entries_.back(); }
    void RemoveAll() { entries_.clear(); }

    [[nodiscard]] POSITION GetHeadPosition() { return at(entries_.begin()); }
    [[nodiscard]] POSITION GetTailPosition() {
        return IsEmpty() ? POSITION() : POSITION(std::prev(entries_.end()));
    }
    [[nodiscard]] POSITION GetHeadPosition() const { return const_cast<CList *>(this)->GetHeadPosition(); }
    [[nodiscard]] POSITION GetTailPosition() const { return const_cast<CList *>(this)->GetTailPosition(); }

    /// Returns the entry at `position`, which advances to the next one, or to none at the end.
    TYPE &GetNext(POSITION &position) {
        TYPE &entry = **position.place_;
        position = at(std::next(*position.place_));
        return entry;
    }
    const TYPE &GetNext(POSITION &position) const { return const_cast<CList *>(this)->GetNext(position); }
    TYPE &GetPrev(POSITION &position) {
        TYPE &entry = **position.place_;
        position = *position.place_ == entries_.begin() ? POSITION() : POSITION(std::prev(*position.place_));
        return entry;
    }

    [[nodiscard]] TYPE &GetAt(const POSITION &position) { return **position.place_; }
    [[nodiscard]] const TYPE &GetAt(const POSITION &position) const { return **position.place_; }
    void SetAt(const POSITION &position, ARG entry) { **position.place_ = entry; }
    void RemoveAt(const POSITION &position) { entries_.erase(*position.place_); }
    POSITION InsertBefore(const POSITION &position, ARG entry) {
        return position ? POSITION(entries_.insert(*position.place_, entry)) : AddHead(entry);
    }
    POSITION InsertAfter(const POSITION &position, ARG entry) {
        return position ? POSITION(entries_.insert(std::next(*position.place_), entry)) : AddTail(entry);
    }

    /// The first entry equal to `entry` after `startAfter` (from the head without one), or none. Linear.
    template <class SEARCHED> [[nodiscard]] POSITION Find(const SEARCHED &entry, POSITION startAfter = {}) const {
        auto &entries = const_cast<std::list<TYPE> &>(entries_);
        auto from = startAfter ? std::next(*startAfter.place_) : entries.begin();
        return const_cast<CList *>(this)->at(std::find(from, entries.end(), entry));
    }
    /// The entry with the given index, counted from 0, or none. Linear.
    [[nodiscard]] POSITION FindIndex(int index) const {
        if (index < 0 || index >= GetCount()) {
            return {};
        }
        return POSITION(std::next(const_cast<std::list<TYPE> &>(entries_).begin(), index));
    }

    [[nodiscard]] iterator begin() { return entries_.begin(); }
    [[nodiscard]] iterator end() { return entries_.end(); }
    [[nodiscard]] const_iterator begin() const { return entries_.begin(); }
    [[nodiscard]] const_iterator end() const { return entries_.end(); }

  private:
    POSITION at(iterator place) { return place == entries_.end() ? POSITION() : POSITION(place); }

    std::list<TYPE> entries_;
};
