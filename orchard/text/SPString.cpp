// Implements the members of SPString and SPStringList that use patterns.
#include "CM/host/SPString.h"

#include "orchard/text/CompiledPattern.h"
#include "orchard/text/PatternCache.h"
#include "orchard/text/Replacement.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>
#include <vector>

namespace {

using orchard::Span;

std::shared_ptr<const orchard::CompiledPattern> compiled(const SPString &pattern, const char *flags) {
    return orchard::PatternCache::ofThisThread().get(pattern.str(), flags == nullptr ? "" : flags);
}

/// Visits the matches of a pattern from left to right.
class Matches {
  public:
    Matches(std::string_view subject, std::shared_ptr<const orchard::CompiledPattern> pattern,
            orchard::TimeAllowance time = orchard::TimeAllowance())
        : subject_(subject), pattern_(std::move(pattern)), time_(time) {}

    bool next() {
        const bool found = pattern_->search(subject_, at_, lastWasEmpty_, time_, spans_);
        if (found) {
            at_ = spans_[0].end;
            lastWasEmpty_ = spans_[0].begin == spans_[0].end;
        }
        return found;
    }
    [[nodiscard]] const std::vector<Span> &spans() const { return spans_; }
    [[nodiscard]] Span whole() const { return spans_[0]; }
    /// Runs work whose time does not count for the pattern.
    template <class WORK> void pauseFor(WORK work) {
        const auto start = orchard::TimeAllowance::Clock::now();
        work();
        time_.extend(orchard::TimeAllowance::Clock::now() - start);
    }

  private:
    std::string_view subject_;
    std::shared_ptr<const orchard::CompiledPattern> pattern_;
    std::size_t at_ = 0;
    bool lastWasEmpty_ = false;
    orchard::TimeAllowance time_;
    std::vector<Span> spans_;
};

} // namespace

int SPString::m(const SPString &pattern, const char *flags) const {
    return Matches(text_, compiled(pattern, flags)).next() ? 1 : 0;
}

int SPString::m(const SPString &pattern, SPStringList &matches, const char *flags) const {
    Matches found(text_, compiled(pattern, flags));
    matches.reset();
    if (!found.next()) {
        return 0;
    }
    for (const Span &span : found.spans()) {
        matches.push(std::string(span.of(text_)));
    }
    return 1;
}

int SPString::s(const SPString &pattern, const SPString &replacement, const char *flags) {
    const bool all = flags != nullptr && std::string_view(flags).find('g') != std::string_view::npos;
    Matches found(text_, compiled(pattern, flags));
    if (!found.next()) {
        return 0;
    }
    const std::string inserted = orchard::replacementText(replacement.text_);
    std::string result;
    std::size_t copied = 0;
    int count = 0;
    do {
        result.append(text_, copied, found.whole().begin - copied).append(inserted);
        copied = found.whole().end;
        ++count;
    } while (all && found.next());
    text_ = std::move(result.append(text_, copied));
    return count;
}

namespace {

/// Finds the matches of the delimiter in a text of many records.
Matches delimitersIn(std::string_view text, std::shared_ptr<const orchard::CompiledPattern> delimiter) {
    return {text, std::move(delimiter), orchard::TimeAllowance::forSize(text.size())};
}

/// Passes each part of the text between the matches to `take`, at most `limit` parts if it is greater than 0. The
/// empty text has no parts.
template <class TAKE> void cut(std::string_view text, Matches &found, int limit, TAKE take) {
    if (text.empty()) {
        return;
    }
    std::size_t from = 0;
    for (std::size_t parts = 1; (limit <= 0 || parts < static_cast<std::size_t>(limit)) && found.next();) {
        const Span gap = found.whole();
        const bool isEmpty = gap.begin == gap.end;
        if (isEmpty && (gap.begin == 0 || gap.end == text.size())) {
            continue; // an empty delimiter at either end separates nothing
        }
        take(text.substr(from, gap.begin - from));
        from = gap.end;
        ++parts;
    }
    take(text.substr(from));
}

} // namespace

int SPStringList::split(const SPString &text, const SPString &pattern, int limit) {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the text may be an entry of this very list
    const std::string subject = text.str();
    Matches found = delimitersIn(subject, compiled(pattern, ""));
    reset();
    int empty = 0; // empty parts not added yet, since they may be at the end
    cut(subject, found, limit, [&](std::string_view part) {
        if (limit == 0 && part.empty()) {
            ++empty;
            return;
        }
        for (; empty > 0; --empty) {
            push(SPString());
        }
        push(std::string(part));
    });
    return count();
}

struct SPPattern::Code {
    std::shared_ptr<const orchard::CompiledPattern> compiled;
};

SPPattern::SPPattern(const SPString &pattern, const char *flags)
    : code_(std::make_shared<const Code>(Code{compiled(pattern, flags)})) {}

int SPPattern::m(std::string_view text, std::string_view &group) const {
    orchard::TimeAllowance time;
    std::array<Span, 2> spans;
    if (!code_->compiled->search(text, 0, false, time, std::span(spans))) {
        return 0;
    }
    group = spans[1].of(text);
    return 1;
}

void SPPattern::split(std::string_view text, const std::function<void(std::string_view)> &take) const {
    constexpr std::size_t batch = 256; // parts that are still in the processor's cache when they are read
    std::vector<std::string_view> parts;
    parts.reserve(batch);
    Matches found = delimitersIn(text, code_->compiled);
    const auto handOver = [&] {
        found.pauseFor([&] { std::ranges::for_each(parts, take); });
        parts.clear();
    };
    cut(text, found, -1, [&](std::string_view part) {
        parts.push_back(part);
        if (parts.size() == batch) {
            handOver();
        }
    });
    handOver();
}
