// Matches patterns against texts. The first line is the pattern, the rest is the text. The translation adds only
// backslashes. Plain text is found where the engine finds it. A match is within the text. Every pattern ends
// within its time limit. In a long text, made by repetition, matches are found where a single call of the engine
// finds them.
#include "orchard/text/CompiledPattern.h"
#include "orchard/text/Engine.h"
#include "orchard/text/LiteralSearch.h"
#include "orchard/text/PatternDialect.h"
#include "orchard/text/PatternReport.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void translation(std::string_view pattern) {
    const orchard::TranslatedPattern translated = orchard::translatePattern(pattern);
    std::string without = translated.text;
    for (auto at = translated.inserted.rbegin(); at != translated.inserted.rend(); ++at) {
        check(without[*at] == '\\');
        without.erase(*at, 1);
    }
    check(without == pattern);
    check(translated.originalPosition(translated.text.size()) == pattern.size());
}

void plainText(std::string_view pattern, std::string_view text) {
    const auto literal = orchard::literalText(pattern);
    if (!literal) {
        return;
    }
    for (const char *const flags : {"", "i"}) {
        orchard::engine::CompileError error;
        const auto code = orchard::engine::compile(orchard::translatePattern(pattern).text,
                                                   orchard::engine::optionsOf(flags), error);
        check(code != nullptr);
        orchard::engine::Request request;
        request.subject = text;
        request.steps = 1'000'000;
        orchard::engine::Workspace &work = orchard::engine::Workspace::ofThisThread(1);
        const int result = work.match(code.get(), false, request);
        const std::size_t found =
            *flags == 'i' ? orchard::findIgnoringCase(text, *literal, 0) : text.find(*literal);
        check((result > 0) == (found != std::string_view::npos));
        check(result <= 0 || work.offsets()[0] == found);
    }
}

/// Checks that several calls of the engine for a long text give the same result as one call, if both end in time.
void longText(std::string_view pattern, std::string_view text) {
    constexpr std::size_t longEnough = 9'000;
    std::string whole;
    while (!text.empty() && whole.size() < longEnough) {
        whole += text;
    }
    for (const char *const flags : {"", "i", "m"}) {
        orchard::engine::CompileError error;
        const auto code = orchard::engine::compile(orchard::translatePattern(pattern).text,
                                                   orchard::engine::optionsOf(flags) | PCRE2_AUTO_CALLOUT, error);
        if (code == nullptr) {
            return;
        }
        const orchard::CompiledPattern compiled(pattern, flags);
        for (std::size_t start = 0; start < whole.size(); start = 2 * start + 1) {
            orchard::engine::Request request;
            request.subject = whole;
            request.start = start;
            request.options = start % 4 == 3 ? PCRE2_NOTEMPTY_ATSTART : 0U;
            request.steps = 10'000'000;
            request.end = std::chrono::steady_clock::now() + std::chrono::milliseconds(20);
            orchard::engine::Workspace &work =
                orchard::engine::Workspace::ofThisThread(static_cast<std::uint32_t>(compiled.pairs()));
            const int result = work.match(code.get(), false, request);
            if (result < 0 && result != PCRE2_ERROR_NOMATCH) {
                return;
            }
            const std::size_t begin = result > 0 ? work.offsets()[0] : 0;
            const std::size_t end = result > 0 ? work.offsets()[1] : 0;
            orchard::TimeAllowance time(std::chrono::milliseconds(200));
            std::vector<orchard::Span> spans;
            const auto before = std::chrono::steady_clock::now();
            const bool found = compiled.search(whole, start, request.options != 0, time, spans);
            if (std::chrono::steady_clock::now() - before > std::chrono::milliseconds(100)) {
                return; // it may have been stopped
            }
            check(found == (result > 0));
            check(!found || (spans[0].begin == begin && spans[0].end == end));
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size) {
    orchard::setPatternReporter([](const orchard::PatternProblem &problem) { check(!problem.message().empty()); });
    const std::string_view input(reinterpret_cast<const char *>(bytes), size);
    const std::size_t line = input.find('\n');
    const std::string_view pattern = input.substr(0, line);
    const std::string_view text = line == std::string_view::npos ? std::string_view() : input.substr(line + 1);
    translation(pattern);
    plainText(pattern, text);

    const auto start = std::chrono::steady_clock::now();
    for (const char *const flags : {"", "i"}) {
        const orchard::CompiledPattern compiled(pattern, flags);
        orchard::TimeAllowance time(std::chrono::milliseconds(50));
        std::vector<orchard::Span> spans;
        if (compiled.search(text, 0, false, time, spans)) {
            check(!spans.empty());
            // With "\K" in a lookahead a match can begin after its end.
            check(spans[0].begin <= text.size() && spans[0].end <= text.size());
            for (const orchard::Span &span : spans) {
                check(span.of(text).size() <= text.size());
            }
        }
    }
    check(std::chrono::steady_clock::now() - start < std::chrono::seconds(5));
    longText(pattern, text);
    return 0;
}
