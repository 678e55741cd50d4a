// Compiles a pattern and matches it against byte strings.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orchard {

/// A part of a subject, with positions in bytes. A group that took no part in the match is `none`.
struct Span {
    static constexpr std::size_t none = static_cast<std::size_t>(-1);
    std::size_t begin = none;
    std::size_t end = none;

    [[nodiscard]] std::string_view of(std::string_view subject) const {
        return begin == none ? std::string_view() : subject.substr(begin, end > begin ? end - begin : 0);
    }
};

/// Limits the total time of one call of SPString or SPPattern. The time starts with the first query.
class TimeAllowance {
  public:
    using Clock = std::chrono::steady_clock;
    explicit TimeAllowance(Clock::duration total = std::chrono::seconds(5)) : total_(total) {}
    /// For work that reads a complete text of this size.
    static TimeAllowance forSize(std::size_t bytes);
    /// Returns when the time will be used up.
    Clock::time_point end();
    /// Returns whether the time is used up. Reads the clock only now and then; otherwise returns false.
    bool isUsedUpNowAndThen();
    /// Adds time that was spent on something else.
    void extend(Clock::duration by) { end_ = end_ ? std::optional(*end_ + by) : std::nullopt; }

  private:
    Clock::duration total_;
    std::optional<Clock::time_point> end_;
    unsigned calls_ = 0;
};

class CompiledPattern {
  public:
    /// Flags: 'i' ignores case, 'm' matches "^" and "$" at each line, 's' lets "." match a newline too,
    /// 'x' allows blanks and comments in the pattern. Other characters have no effect. An invalid pattern
    /// is reported and matches nothing.
    CompiledPattern(std::string_view pattern, std::string_view flags);
    ~CompiledPattern();
    CompiledPattern(const CompiledPattern &) = delete;
    CompiledPattern &operator=(const CompiledPattern &) = delete;

    /// Searches for the first match that begins at or after `start`; with `notEmptyAtStart` an empty match at
    /// `start` doesn't count. On a match `spans` contains the complete match and then each group. A search that
    /// runs out of steps, memory or time is reported and counts as no match.
    bool search(std::string_view subject, std::size_t start, bool notEmptyAtStart, TimeAllowance &time,
                std::vector<Span> &spans) const;
    /// Does the same for as many spans as fit; spans without a group become `none`.
    bool search(std::string_view subject, std::size_t start, bool notEmptyAtStart, TimeAllowance &time,
                std::span<Span> spans) const;

    /// Returns the number of groups plus one for the complete match; 1 for an invalid pattern.
    [[nodiscard]] std::size_t pairs() const;

  private:
    struct Code;
    bool searchLiteral(std::string_view subject, std::size_t start, std::span<Span> spans) const;
    void reportFailure(int result) const;

    std::string pattern_;
    std::string literal_; ///< non-empty if the pattern is plain text
    bool ignoresCase_ = false;
    std::unique_ptr<Code> code_; ///< null for plain text and for an invalid pattern
};

} // namespace orchard
