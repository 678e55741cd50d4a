// A pattern made ready to be matched against byte strings many times.
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

/// A part of a subject: positions in bytes. A group that took no part in the match is `none`.
struct Span {
    static constexpr std::size_t none = static_cast<std::size_t>(-1);
    std::size_t begin = none;
    std::size_t end = none;

    [[nodiscard]] std::string_view of(std::string_view subject) const {
        return begin == none ? std::string_view() : subject.substr(begin, end > begin ? end - begin : 0);
    }
};

/// The time that one call of the text class may take in all. It starts with the first look at it.
class TimeAllowance {
  public:
    using Clock = std::chrono::steady_clock;
    explicit TimeAllowance(Clock::duration total = std::chrono::seconds(5)) : total_(total) {}
    /// For work that goes through a text of so many bytes from end to end.
    static TimeAllowance forSize(std::size_t bytes);
    /// When the time will be used up.
    Clock::time_point end();
    /// Whether it is, by a look at the clock at one call of many; false at the others.
    bool isUsedUpNowAndThen();
    /// Makes up for time that went to something else.
    void extend(Clock::duration by) { end_ = end_ ? std::optional(*end_ + by) : std::nullopt; }

  private:
    Clock::duration total_;
    std::optional<Clock::time_point> end_;
    unsigned calls_ = 0;
};

class CompiledPattern {
  public:
    /// Flags: 'i' without regard to case, 'm' "^" and "$" at each line, 's' "." matches a newline too,
    /// 'x' blanks and comments in the pattern. Other characters have no effect here. A pattern that is no
    /// valid one is reported, and matches nothing.
    CompiledPattern(std::string_view pattern, std::string_view flags);
    ~CompiledPattern();
    CompiledPattern(const CompiledPattern &) = delete;
    CompiledPattern &operator=(const CompiledPattern &) = delete;

    /// Looks for the first match that begins at or behind `start`; with `notEmptyAtStart` an empty match right
    /// there doesn't count. On a match `spans` holds the whole match and then each group. A search that runs out
    /// of steps, memory or time is reported, and counts as no match.
    bool search(std::string_view subject, std::size_t start, bool notEmptyAtStart, TimeAllowance &time,
                std::vector<Span> &spans) const;
    /// The same for as many of them as there is room for; those that the pattern lacks become `none`.
    bool search(std::string_view subject, std::size_t start, bool notEmptyAtStart, TimeAllowance &time,
                std::span<Span> spans) const;

    /// How many groups the pattern has, and one for the whole match; 1 for a pattern that is no valid one.
    [[nodiscard]] std::size_t pairs() const;

  private:
    struct Code;
    bool searchLiteral(std::string_view subject, std::size_t start, std::span<Span> spans) const;
    void reportFailure(int result) const;

    std::string pattern_;
    std::string literal_; ///< non-empty if the pattern is plain text
    bool ignoresCase_ = false;
    std::unique_ptr<Code> code_; ///< null for plain text and for a pattern that is no valid one
};

} // namespace orchard
