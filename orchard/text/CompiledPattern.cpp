#include "orchard/text/CompiledPattern.h"

#include "orchard/text/Engine.h"
#include "orchard/text/LiteralSearch.h"
#include "orchard/text/PatternDialect.h"
#include "orchard/text/PatternReport.h"

#include <algorithm>

namespace orchard {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t longestPattern = 60'000; // bytes; the engine's own limit on compiled code is near it
constexpr std::size_t shortSubject = 256;      // bytes that one call searches
constexpr std::size_t mediumSubject = 8192;    // bytes that one call searches if few steps suffice
constexpr std::uint32_t fewSteps = 64;
constexpr std::size_t firstStride = 1024; // starting positions before the first look at the clock
constexpr std::size_t largestStride = 16 * 1024;

/// Steps from one starting position without a look at the clock. A step may read the complete subject.
std::uint32_t quickSteps(std::size_t subjectSize) {
    return static_cast<std::uint32_t>(std::clamp<std::size_t>(20'000'000 / (subjectSize + 1), 64, 200'000));
}

} // namespace

TimeAllowance TimeAllowance::forSize(std::size_t bytes) {
    constexpr std::size_t bytesOfASecond = 10'000'000;
    return TimeAllowance(5s + std::chrono::seconds(bytes / bytesOfASecond));
}

bool TimeAllowance::isUsedUpNowAndThen() {
    constexpr unsigned callsPerLook = 16;
    return ++calls_ % callsPerLook == 0 && Clock::now() >= end();
}

TimeAllowance::Clock::time_point TimeAllowance::end() {
    if (!end_) {
        end_ = Clock::now() + total_;
    }
    return *end_;
}

/// The engine counts steps for each starting position and never looks at a clock by itself. A search is therefore
/// unwatched first: few steps, and in a long subject few starting positions for each call. If it needs more, it is
/// repeated with code that checks the time as it runs, which is slower.
struct CompiledPattern::Code {
    engine::Code quick;
    engine::Code watched; ///< compiled when it is first needed
    bool quickIsMachineCode = false;
    bool watchedIsMachineCode = false;
    std::string text; ///< what is compiled, and how
    std::uint32_t options = 0;
    std::uint32_t pairs = 1;
    int timeouts = 0;
    bool canBeSliced = false; ///< whether starting positions may be tried in several calls
    engine::Starts starts;

    int searchWatched(engine::Request request, TimeAllowance &time, engine::Workspace &work) {
        if (isGivenUp()) {
            return engine::timeIsUsedUp;
        }
        if (!watched) {
            engine::CompileError error;
            watched = engine::compile(text, options | PCRE2_AUTO_CALLOUT, error);
            if (!watched) { // with the time checks it is too long
                return PCRE2_ERROR_MATCHLIMIT;
            }
            watchedIsMachineCode = pcre2_jit_compile(watched.get(), PCRE2_JIT_COMPLETE) == 0;
        }
        request.lastStart = PCRE2_UNSET;
        request.steps = 0xffff'ffffU;
        // A pattern that has timed out gets less time each time, or a batch would wait for it again and again.
        request.end = std::min(time.end(), TimeAllowance::Clock::now() + 5s / (1 << timeouts));
        const int result = work.match(watched.get(), watchedIsMachineCode, request);
        timeouts += result == engine::timeIsUsedUp ? 1 : 0;
        return result;
    }

    /// After this many time-outs, 10 s in total, the pattern gets only few steps: then a million texts on which it
    /// fails end too, and texts for which few steps suffice still match.
    [[nodiscard]] bool isGivenUp() const { return timeouts >= 9; }

    [[nodiscard]] std::uint32_t stepsFor(std::size_t subjectSize) const {
        return isGivenUp() ? std::min(quickSteps(subjectSize), 4 * fewSteps) : quickSteps(subjectSize);
    }

    int search(std::string_view subject, std::size_t start, bool notEmptyAtStart, TimeAllowance &time,
               engine::Workspace &work) {
        engine::Request request{subject,  start,       PCRE2_UNSET, notEmptyAtStart ? PCRE2_NOTEMPTY_ATSTART : 0U,
                                fewSteps, std::nullopt};
        if (subject.size() <= mediumSubject) {
            const int result = work.match(quick.get(), quickIsMachineCode, request);
            if (!isOutOfSteps(result)) {
                return result;
            }
        }
        request.steps = stepsFor(subject.size());
        const int result = !canBeSliced || subject.size() - start <= shortSubject
                               ? work.match(quick.get(), quickIsMachineCode, request)
                               : searchInSlices(request, time, work);
        return isOutOfSteps(result) ? searchWatched(request, time, work) : result;
    }

    /// Tries the starting positions in several calls, with looks at the clock in between. Returns with the request
    /// of the last call.
    int searchInSlices(engine::Request &request, TimeAllowance &time, engine::Workspace &work) const {
        if (time.isUsedUpNowAndThen()) {
            return engine::timeIsUsedUp;
        }
        const std::size_t first = request.start;
        std::size_t stride = firstStride;
        std::optional<TimeAllowance::Clock::time_point> before;
        std::size_t next = starts.first(request.subject, first);
        while (next <= request.subject.size()) {
            request.options = next == first ? request.options : 0U;
            request.start = next;
            request.lastStart = next + stride;
            const int result = work.match(quick.get(), quickIsMachineCode, request);
            if (result != PCRE2_ERROR_NOMATCH) {
                return result;
            }
            const auto now = TimeAllowance::Clock::now();
            if (now >= time.end()) {
                return engine::timeIsUsedUp;
            }
            next = starts.next(request.subject, next + stride + 1);
            if (before) {
                stride = now - *before < 2ms ? std::min(stride * 4, largestStride)
                                             : std::max<std::size_t>(stride / 4, 1);
            }
            before = now;
        }
        return PCRE2_ERROR_NOMATCH;
    }

    static bool isOutOfSteps(int result) {
        return result == PCRE2_ERROR_MATCHLIMIT || result == PCRE2_ERROR_DEPTHLIMIT;
    }
};

CompiledPattern::CompiledPattern(std::string_view pattern, std::string_view flags)
    : pattern_(pattern), ignoresCase_(flags.find('i') != std::string_view::npos) {
    if (flags.find('x') == std::string_view::npos) {
        if (auto literal = literalText(pattern)) {
            literal_ = std::move(*literal);
            return;
        }
    }
    if (pattern.size() > longestPattern) {
        reportPatternProblem({pattern_, std::nullopt, "it is longer than 60,000 bytes", {}});
        return;
    }
    TranslatedPattern translated = translatePattern(pattern);
    auto made = std::make_unique<Code>();
    made->options = engine::optionsOf(flags);
    engine::CompileError error;
    made->quick = engine::compile(translated.text, made->options, error);
    if (!made->quick) {
        reportPatternProblem({pattern_, translated.originalPosition(error.position), error.reason, {}});
        return;
    }
    std::uint32_t groups = 0;
    std::uint32_t allOptions = 0;
    pcre2_pattern_info(made->quick.get(), PCRE2_INFO_CAPTURECOUNT, &groups);
    pcre2_pattern_info(made->quick.get(), PCRE2_INFO_ALLOPTIONS, &allOptions);
    made->pairs = groups + 1;
    made->quickIsMachineCode = pcre2_jit_compile(made->quick.get(), PCRE2_JIT_COMPLETE) == 0;
    made->text = std::move(translated.text);
    // "\G" and the verbs refer to the complete search, and an anchored pattern tries only one position.
    made->canBeSliced = (allOptions & PCRE2_ANCHORED) == 0 && pattern.find("(*") == std::string_view::npos &&
                        pattern.find("\\G") == std::string_view::npos;
    // An option within the pattern can ignore case as the flag does.
    made->starts = engine::Starts(made->quick.get(), ignoresCase_ || pattern.find("(?") != std::string_view::npos);
    code_ = std::move(made);
}

CompiledPattern::~CompiledPattern() = default;

std::size_t CompiledPattern::pairs() const { return code_ ? code_->pairs : 1; }

bool CompiledPattern::searchLiteral(std::string_view subject, std::size_t start, std::span<Span> spans) const {
    const std::size_t found = start > subject.size() ? std::string_view::npos
                              : ignoresCase_         ? findIgnoringCase(subject, literal_, start)
                                                     : findText(subject, literal_, start);
    if (found == std::string_view::npos) {
        return false;
    }
    std::ranges::fill(spans, Span{});
    spans.front() = Span{found, found + literal_.size()};
    return true;
}

void CompiledPattern::reportFailure(int result) const {
    reportPatternProblem({pattern_,
                          std::nullopt,
                          result == engine::timeIsUsedUp
                              ? "it takes too long, because it tries too many combinations"
                              : "matching was stopped: " + engine::textOfError(result),
                          {}});
}

bool CompiledPattern::search(std::string_view subject, std::size_t start, bool notEmptyAtStart,
                             TimeAllowance &time, std::vector<Span> &spans) const {
    spans.resize(pairs());
    return search(subject, start, notEmptyAtStart, time, std::span(spans));
}

bool CompiledPattern::search(std::string_view subject, std::size_t start, bool notEmptyAtStart,
                             TimeAllowance &time, std::span<Span> spans) const {
    if (!literal_.empty()) {
        return searchLiteral(subject, start, spans);
    }
    if (!code_ || start > subject.size()) {
        return false;
    }
    engine::Workspace &work = engine::Workspace::ofThisThread(code_->pairs);
    const int result = code_->search(subject, start, notEmptyAtStart, time, work);
    if (result < 0) {
        if (result != PCRE2_ERROR_NOMATCH) {
            reportFailure(result);
        }
        return false;
    }
    const PCRE2_SIZE *const offsets = work.offsets();
    for (std::size_t i = 0; i < spans.size(); ++i) {
        const bool tookPart = i < static_cast<std::size_t>(result) && offsets[2 * i] != PCRE2_UNSET;
        spans[i] = tookPart ? Span{offsets[2 * i], offsets[2 * i + 1]} : Span{};
    }
    return true;
}

} // namespace orchard
