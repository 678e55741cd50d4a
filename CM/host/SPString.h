// Text with regular expressions. The dialect of the patterns is the host's; docs/configuration.md describes
// that of the reference host.
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

    /// Non-zero if the pattern matches. Flags: "i" without regard to case. A bad pattern counts as no match.
    [[nodiscard]] int m(const SPString &pattern, const char *flags = "") const;
    /// The same; on a match the list holds the whole match, then group 1, group 2 and so on (a group that took no
    /// part is empty); without a match it is emptied.
    int m(const SPString &pattern, SPStringList &matches, const char *flags = "") const;
    /// Replaces the first match, all with the flag "g"; returns how many. In the replacement a backslash takes
    /// away the special meaning of a dollar or a backslash behind it.
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
    /// The entry with this index counted from 0; an index outside gives the empty text.
    [[nodiscard]] const TEXT &operator[](int index) const {
        static const TEXT none;
        return index >= 0 && index < count() ? entries_[first_ + static_cast<std::size_t>(index)] : none;
    }
    /// Takes the first entry off; the empty text if there is none.
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
    /// The block size is a hint of the caller's about growth; it has no effect on behaviour.
    explicit SPStringList(int blockSize = 10) { static_cast<void>(blockSize); }
    /// Fills the list with the parts of `text` between the matches of `pattern`, at most `limit` parts if it is
    /// greater than 0; returns how many.
    int split(const SPString &text, const SPString &pattern, int limit = 0);
};

/// A pattern that is made ready once, for texts of many records: what it gives are parts of the text that it is
/// matched against, not copies.
class ORC_HOST_API SPPattern {
  public:
    /// Flags as those of SPString::m. A bad pattern matches nothing.
    explicit SPPattern(const SPString &pattern, const char *flags = "");

    /// As SPString::m: non-zero if the pattern matches `text`. `group` becomes what group 1 matched, empty if
    /// there is no such group or it took no part; without a match it stays as it was.
    int m(std::string_view text, std::string_view &group) const;
    /// As SPStringList::split with the limit -1: hands over the parts of `text` between the matches, one after the
    /// other, empty ones included. The empty text has none.
    void split(std::string_view text, const std::function<void(std::string_view)> &take) const;

  private:
    struct Code; // the host's
    std::shared_ptr<const Code> code_;
};
