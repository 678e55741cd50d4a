#include "orchard/text/CompiledPattern.h"

#include "orchard/text/PatternDialect.h"
#include "orchard/text/PatternReport.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdint>
#include <cstring>

namespace orchard {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t longestPattern = 60'000;  // bytes; the engine's own limit on compiled code is near it
constexpr std::uint32_t heapLimit = 256 * 1024; // KiB that the engine may take without its compiler
constexpr std::size_t jitStackStart = 32 * 1024;
constexpr std::size_t jitStackLimit = 16 * 1024 * 1024;
constexpr int timeIsUsedUp = -1000;         // beyond the engine's own error numbers
constexpr std::size_t shortSubject = 256;   // bytes up to which no search can take long enough to look at a clock
constexpr std::size_t smallestStride = 256; // starting positions that are tried between two looks at the clock
constexpr std::size_t largestStride = 16 * 1024;

template <auto FREE> struct Freed {
    template <class T> void operator()(T *pointer) const { FREE(pointer); }
};
using CodePointer = std::unique_ptr<pcre2_code, Freed<pcre2_code_free>>;
using MatchData = std::unique_ptr<pcre2_match_data, Freed<pcre2_match_data_free>>;
using MatchContext = std::unique_ptr<pcre2_match_context, Freed<pcre2_match_context_free>>;
using CompileContext = std::unique_ptr<pcre2_compile_context, Freed<pcre2_compile_context_free>>;
using JitStack = std::unique_ptr<pcre2_jit_stack, Freed<pcre2_jit_stack_free>>;

/// What a match needs besides the pattern; one set a thread, used again by every match.
struct Workspace {
    MatchContext context{pcre2_match_context_create(nullptr)};
    JitStack stack{pcre2_jit_stack_create(jitStackStart, jitStackLimit, nullptr)};
    MatchData data;
    std::uint32_t pairs = 0;

    Workspace() {
        pcre2_set_heap_limit(context.get(), heapLimit);
        pcre2_jit_stack_assign(context.get(), nullptr, stack.get());
    }

    pcre2_match_data *dataFor(std::uint32_t wanted) {
        if (wanted > pairs) {
            pairs = std::max<std::uint32_t>(wanted, 32);
            data.reset(pcre2_match_data_create(pairs, nullptr));
        }
        return data.get();
    }
};

Workspace &workspace() {
    thread_local Workspace theWorkspace;
    return theWorkspace;
}

std::string textOfError(int code) {
    std::array<unsigned char, 256> buffer{};
    pcre2_get_error_message(code, buffer.data(), buffer.size());
    return reinterpret_cast<const char *>(buffer.data());
}

std::uint32_t optionsOf(std::string_view flags) {
    // Subjects are bytes in no certain encoding, so the engine must never take them for Unicode.
    std::uint32_t options = PCRE2_NEVER_UTF | PCRE2_NEVER_UCP | PCRE2_USE_OFFSET_LIMIT;
    for (const char flag : flags) {
        options |= flag == 'i'   ? PCRE2_CASELESS
                   : flag == 'm' ? PCRE2_MULTILINE
                   : flag == 's' ? PCRE2_DOTALL
                   : flag == 'x' ? PCRE2_EXTENDED
                                 : 0U;
    }
    return options;
}

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }
char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

bool equalsIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char l, char r) { return lower(l) == lower(r); });
}

/// Finds the next of two characters without reading far beyond it, so that many calls stay cheap together.
std::size_t findEither(std::string_view text, char first, char second, std::size_t from) {
    constexpr std::size_t window = 128;
    while (from < text.size()) {
        const std::string_view part = text.substr(from, window);
        const auto found = std::min(part.find(first), part.find(second));
        if (found != std::string_view::npos) {
            return from + found;
        }
        from += part.size();
    }
    return std::string_view::npos;
}

std::size_t findIgnoringCase(std::string_view text, std::string_view what, std::size_t from) {
    const char low = lower(what.front());
    const char high = upper(what.front());
    for (;; ++from) {
        from = low == high ? text.find(low, from) : findEither(text, low, high, from);
        if (from == std::string_view::npos || text.size() - from < what.size()) {
            return std::string_view::npos;
        }
        if (equalsIgnoringCase(text.substr(from, what.size()), what)) {
            return from;
        }
    }
}

} // namespace

bool TimeAllowance::isUsedUp(Clock::time_point now) {
    if (!end_) {
        end_ = now + total_;
    }
    return now >= *end_;
}

struct CompiledPattern::Code {
    CodePointer code;
    std::uint32_t pairs = 1;
    bool isCompiled = false;  ///< to machine code
    bool canBeSliced = false; ///< whether starting positions may be tried in several calls

    std::bitset<256> starts; ///< the bytes that a match can begin with; all if that isn't known
    bool startsAtLines = false;

    void learnStarts(bool ignoresCase) {
        std::uint32_t kind = 0;
        pcre2_pattern_info(code.get(), PCRE2_INFO_FIRSTCODETYPE, &kind);
        const std::uint8_t *bitmap = nullptr;
        pcre2_pattern_info(code.get(), PCRE2_INFO_FIRSTBITMAP, &bitmap);
        startsAtLines = kind == 2;
        if (kind == 1) {
            std::uint32_t first = 0;
            pcre2_pattern_info(code.get(), PCRE2_INFO_FIRSTCODEUNIT, &first);
            const auto byte = static_cast<char>(first);
            for (const char c : {byte, ignoresCase ? lower(byte) : byte, ignoresCase ? upper(byte) : byte}) {
                starts.set(static_cast<unsigned char>(c));
            }
        } else if (bitmap != nullptr) {
            for (std::size_t i = 0; i < 256; ++i) {
                starts.set(i, ((static_cast<unsigned>(bitmap[i / 8]) >> (i % 8)) & 1U) != 0);
            }
        } else {
            starts.set();
        }
    }

    /// The first position at or behind `from` where a match can begin; behind the subject if there is none.
    /// Without it each stride would look through the rest of the subject for such a position.
    [[nodiscard]] std::size_t nextStart(std::string_view subject, std::size_t from) const {
        if (startsAtLines) {
            if (from == 0 || from > subject.size() || subject[from - 1] == '\n') {
                return from;
            }
            const std::size_t line = subject.find('\n', from);
            return line == std::string_view::npos ? subject.size() + 1 : line + 1;
        }
        if (starts.all()) {
            return from;
        }
        while (from < subject.size() && !starts[static_cast<unsigned char>(subject[from])]) {
            ++from;
        }
        return from < subject.size() ? from : subject.size() + 1;
    }

    /// One call of the engine: the match that begins at or behind `start` and not behind `lastStart`.
    int match(std::string_view subject, std::size_t start, std::size_t lastStart, bool notEmptyAtStart,
              pcre2_match_data *data) const {
        Workspace &work = workspace();
        const auto *bytes = reinterpret_cast<PCRE2_SPTR>(subject.data());
        const std::uint32_t options = notEmptyAtStart ? PCRE2_NOTEMPTY_ATSTART : 0U;
        // Long subjects need steps in proportion to their length; what goes beyond is a pattern that tries
        // one combination after the other.
        const std::uint64_t steps = 1'000'000 + 16 * static_cast<std::uint64_t>(subject.size());
        const auto limit = static_cast<std::uint32_t>(std::min<std::uint64_t>(steps, 0xffff'ffffU));
        pcre2_set_match_limit(work.context.get(), limit);
        pcre2_set_depth_limit(work.context.get(), limit);
        pcre2_set_offset_limit(work.context.get(), lastStart);
        int result = PCRE2_ERROR_JIT_STACKLIMIT;
        if (isCompiled) {
            result = pcre2_jit_match(code.get(), bytes, subject.size(), start, options, data, work.context.get());
        }
        if (result == PCRE2_ERROR_JIT_STACKLIMIT) {
            result = pcre2_match(code.get(), bytes, subject.size(), start, options | PCRE2_NO_JIT, data,
                                 work.context.get());
        }
        return result;
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
    const TranslatedPattern translated = translatePattern(pattern);
    const CompileContext context(pcre2_compile_context_create(nullptr));
    pcre2_set_newline(context.get(), PCRE2_NEWLINE_LF);
    int error = 0;
    PCRE2_SIZE position = 0;
    CodePointer code(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(translated.text.data()), translated.text.size(),
                                   optionsOf(flags), &error, &position, context.get()));
    if (!code) {
        reportPatternProblem({pattern_, translated.originalPosition(position), textOfError(error), {}});
        return;
    }
    code_ = std::make_unique<Code>();
    std::uint32_t groups = 0;
    std::uint32_t allOptions = 0;
    pcre2_pattern_info(code.get(), PCRE2_INFO_CAPTURECOUNT, &groups);
    pcre2_pattern_info(code.get(), PCRE2_INFO_ALLOPTIONS, &allOptions);
    code_->pairs = groups + 1;
    code_->isCompiled = pcre2_jit_compile(code.get(), PCRE2_JIT_COMPLETE) == 0;
    code_->code = std::move(code);
    // An option within the pattern can switch case off as the flag does.
    code_->learnStarts(ignoresCase_ || pattern.find("(?") != std::string_view::npos);
    // "\G" and the verbs speak of the search as a whole, and an anchored pattern tries one position only.
    code_->canBeSliced = (allOptions & PCRE2_ANCHORED) == 0 && pattern.find("(*") == std::string_view::npos &&
                         pattern.find("\\G") == std::string_view::npos;
}

CompiledPattern::~CompiledPattern() = default;

bool CompiledPattern::searchLiteral(std::string_view subject, std::size_t start, std::vector<Span> &spans) const {
    const std::size_t found = start > subject.size() ? Span::none
                              : ignoresCase_         ? findIgnoringCase(subject, literal_, start)
                                                     : subject.find(literal_, start);
    if (found == std::string_view::npos) {
        return false;
    }
    spans.assign(1, Span{found, found + literal_.size()});
    return true;
}

int CompiledPattern::searchInStrides(std::string_view subject, std::size_t start, bool notEmptyAtStart,
                                     TimeAllowance &time, void *matchData) const {
    auto *const data = static_cast<pcre2_match_data *>(matchData);
    std::size_t stride = smallestStride;
    auto before = TimeAllowance::Clock::now();
    for (std::size_t from = start; (from = code_->nextStart(subject, from)) <= subject.size();) {
        if (time.isUsedUp(before)) {
            return timeIsUsedUp;
        }
        const int result = code_->match(subject, from, from + stride, notEmptyAtStart && from == start, data);
        if (result != PCRE2_ERROR_NOMATCH) {
            return result;
        }
        from += stride + 1;
        const auto after = TimeAllowance::Clock::now();
        stride = after - before < 2ms ? std::min(stride * 4, largestStride) : std::max<std::size_t>(stride / 4, 1);
        before = after;
    }
    return PCRE2_ERROR_NOMATCH;
}

bool CompiledPattern::search(std::string_view subject, std::size_t start, bool notEmptyAtStart,
                             TimeAllowance &time, std::vector<Span> &spans) const {
    if (!literal_.empty()) {
        return searchLiteral(subject, start, spans);
    }
    if (!code_ || start > subject.size()) {
        return false;
    }
    pcre2_match_data *const data = workspace().dataFor(code_->pairs);
    const int result = code_->canBeSliced && subject.size() - start > shortSubject
                           ? searchInStrides(subject, start, notEmptyAtStart, time, data)
                           : code_->match(subject, start, PCRE2_UNSET, notEmptyAtStart, data);
    if (result < 0) {
        if (result != PCRE2_ERROR_NOMATCH) {
            reportPatternProblem(
                {pattern_,
                 std::nullopt,
                 "matching was given up (" + textOfError(result) + "): it tries too many combinations",
                 {}});
        }
        return false;
    }
    const PCRE2_SIZE *const offsets = pcre2_get_ovector_pointer(data);
    spans.resize(code_->pairs);
    for (std::size_t i = 0; i < spans.size(); ++i) {
        const bool tookPart = i < static_cast<std::size_t>(result) && offsets[2 * i] != PCRE2_UNSET;
        spans[i] = tookPart ? Span{offsets[2 * i], offsets[2 * i + 1]} : Span{};
    }
    return true;
}

} // namespace orchard
