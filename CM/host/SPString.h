// Declares SPString, a string class with regular expressions. The host defines the dialect of the patterns;
// docs/configuration.md describes that of the reference host.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/platform/CString.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class SPString;
class SPStringList;

class ORC_HOST_API SPString {
  public:
    SPString() = default;
    SPString(const char *text) : text_(text == nullptr ? "" : text) {} // NOLINT(google-explicit-constructor)
    SPString(std::string text) : text_(std::move(text)) {}             // NOLINT(google-explicit-constructor)
    SPString(const CString &text) : text_(text.str()) {}               // NOLINT(google-explicit-constructor)

    /// Returns non-zero if the pattern matches. Flags: "i" ignores case. An invalid pattern matches nothing.
    [[nodiscard]] int m(const SPString &pattern, const char *flags = "") const;
    /// The same; on a match the list contains the complete match, then group 1, group 2 and so on (empty for a
    /// group that didn't participate in the match); without a match it is empty.
    int m(const SPString &pattern, SPStringList &matches, const char *flags = "") const;
    /// Replaces the first match, or all with the flag "g"; returns their number. In the replacement a backslash
    /// escapes a dollar or a backslash after it.
    int s(const SPString &pattern, const SPString &replacement, const char *flags = "");

    [[nodiscard]] int length() const { return static_cast<int>(text_.size()); }
    [[nodiscard]] const std::string &str() const { return text_; }
    [[nodiscard]] const char *c_str() const { return text_.c_str(); }
    operator CString() const { return {text_}; } // NOLINT(google-explicit-constructor)
    friend bool operator==(const SPString &, const SPString &) = default;

  private:
    std::string text_;
};

template <class TEXT> class SPList {
  public:
    [[nodiscard]] int count() const { return static_cast<int>(entries_.size() - first_); }
    /// The entry with this index, counted from 0; an empty text for any other index.
    [[nodiscard]] const TEXT &operator[](int index) const {
        static const TEXT none;
        return index >= 0 && index < count() ? entries_[first_ + static_cast<std::size_t>(index)] : none;
    }
    /// Removes and returns the first entry; an empty text if there is none.
    TEXT shift() { return count() == 0 ? TEXT() : std::move(entries_[first_++]); }
    void push(TEXT entry) { entries_.push_back(std::move(entry)); }
    void reset() {
        entries_.clear();
        first_ = 0;
    }

  private:
    std::vector<TEXT> entries_;
    std::size_t first_ = 0;
};

class ORC_HOST_API SPStringList : public SPList<SPString> {
  public:
    /// The block size is a hint about growth; it has no effect.
    explicit SPStringList(int blockSize = 10) { static_cast<void>(blockSize); }
    /// Fills the list with the parts of `text` between the matches of `pattern`, at most `limit` parts if it is
    /// greater than 0; returns their number.
    int split(const SPString &text, const SPString &pattern, int limit = 0);
};

/// A pattern that is compiled once and matched many times. Its results are views into the matched text, not
/// copies.
class ORC_HOST_API SPPattern {
  public:
    /// Takes the flags of SPString::m. An invalid pattern matches nothing.
    explicit SPPattern(const SPString &pattern, const char *flags = "");

    /// Like SPString::m: returns non-zero if the pattern matches `text`. `group` becomes the match of group 1,
    /// empty if there is no such group or it took no part; without a match it is unchanged.
    int m(std::string_view text, std::string_view &group) const;
    /// Like SPStringList::split with the limit -1: passes each part of `text` between the matches to `take`, empty
    /// ones included. An empty text has no parts.
    void split(std::string_view text, const std::function<void(std::string_view)> &take) const;

  private:
    struct Code; // the host's
    std::shared_ptr<const Code> code_;
};
