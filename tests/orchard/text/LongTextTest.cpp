// Compares searches of long texts, which are divided into several calls of the engine, with a single call.
#include "orchard/text/CompiledPattern.h"
#include "orchard/text/Engine.h"
#include "orchard/text/PatternDialect.h"

#include <gtest/gtest.h>

#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace orchard {

std::ostream &operator<<(std::ostream &stream, const Span &span) {
    return stream << '[' << span.begin << ',' << span.end << ')';
}
bool operator==(const Span &left, const Span &right) { return left.begin == right.begin && left.end == right.end; }

} // namespace orchard

namespace {

using orchard::Span;

struct Row {
    const char *name;
    const char *pattern;
    const char *flags = "";
    friend std::ostream &operator<<(std::ostream &stream, const Row &row) { return stream << row.pattern; }
};

/// Lines of all lengths, of few different characters, so that most patterns match somewhere.
std::string longText(std::mt19937 &random, std::size_t rarity) {
    constexpr std::string_view letters = "aabbX;\n.A1x \xff";
    std::string text(20'000, 'q');
    for (char &c : text) {
        c = random() % rarity == 0 ? letters[random() % letters.size()] : c;
    }
    return text;
}

/// Returns what a single call of the engine finds, which tries each position in turn.
std::vector<Span> oneCall(const pcre2_code *code, std::string_view text, std::size_t start, bool notEmpty,
                          std::size_t pairs) {
    const orchard::engine::Request request{.subject = text,
                                           .start = start,
                                           .lastStart = PCRE2_UNSET,
                                           .options = notEmpty ? PCRE2_NOTEMPTY_ATSTART : 0U,
                                           .steps = 10'000'000,
                                           .end = std::nullopt};
    orchard::engine::Workspace &work = orchard::engine::Workspace::ofThisThread(static_cast<std::uint32_t>(pairs));
    const int result = work.match(code, false, request);
    EXPECT_TRUE(result > 0 || result == PCRE2_ERROR_NOMATCH);
    std::vector<Span> spans;
    for (std::size_t at = 0; result > 0 && at < pairs; ++at) {
        const bool tookPart = at < static_cast<std::size_t>(result);
        spans.push_back(tookPart ? Span{work.offsets()[2 * at], work.offsets()[2 * at + 1]} : Span{});
    }
    return spans;
}

class LongText : public testing::TestWithParam<Row> {};

TEST_P(LongText, GivesFromAnyStartWhatOneCallOfTheEngineGives) {
    const auto &[name, pattern, flags] = GetParam();
    orchard::engine::CompileError error;
    const auto code = orchard::engine::compile(orchard::translatePattern(pattern).text,
                                               orchard::engine::optionsOf(flags), error);
    ASSERT_NE(code, nullptr) << error.reason;
    const orchard::CompiledPattern compiled(pattern, flags);
    std::mt19937 random(11); // NOLINT: the same texts at every run
    for (const std::size_t rarity : {1U, 40U, 3000U}) {
        const std::string text = longText(random, rarity);
        for (int round = 0; round < 20; ++round) {
            const std::size_t start = round == 0   ? 0
                                      : round == 1 ? text.size() - 1025 // the end starts a separate call
                                                   : random() % (text.size() + 1);
            const bool notEmpty = round % 3 == 1;
            orchard::TimeAllowance time;
            std::vector<Span> found;
            if (!compiled.search(text, start, notEmpty, time, found)) {
                found.clear();
            }
            ASSERT_EQ(found, oneCall(code.get(), text, start, notEmpty, compiled.pairs()))
                << "start " << start << ", every " << rarity << "th";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, LongText,
    testing::Values(Row{"AllBeforeACharacter", ".*?;"}, Row{"AllUpToTheLast", ".*;"}, Row{"AllInAGroup", "(.*?);"},
                    Row{"AllAcrossLines", ".*?;", "s"}, Row{"StartOfALine", "^a", "m"},
                    Row{"StartOfALineWithinThePattern", "(?m)^(a|b)"}, Row{"StartOfTheText", "^q"},
                    Row{"EmptyLineStart", "(?m)^"}, Row{"EndOfALine", "(?m)X$"}, Row{"EndOfTheText", "q$"},
                    Row{"EmptyEndOfALine", "(?m)$"}, Row{"NothingOrMore", "a*"}, Row{"Nothing", ""},
                    Row{"OneCharacterInAnyCase", "A[ab]", "i"}, Row{"ACaseThatIsSwitchedOff", "(?i)A(?-i)X"},
                    Row{"ACaseThatIsSwitchedOn", "(?i:a)X"}, Row{"ALookBehind", "(?<=a)[bX]"},
                    Row{"ALookAhead", "(?=X)"}, Row{"ABoundary", "\\bX"}, Row{"AnEarlierStart", "a\\Kb"},
                    Row{"TheStartOfTheSearch", "\\G."}, Row{"TheStartOfTheSearchOrMore", "\\Ga|X1"},
                    Row{"TheStartOfTheSearchBehindSomething", "(?<=qq)\\Gq|X1"}, Row{"AVerb", "q(*SKIP)(*FAIL)|X"},
                    Row{"AVerbThatEndsTheSearch", "a(*COMMIT)b|X"}, Row{"AnOptionalGroup", "(a)?(X)?;(1)?"},
                    Row{"ALineEnd", "\\n+[^q]"}, Row{"ManyKinds", "a|^b|;$|\xff", "m"},
                    Row{"ABackReference", "([abX])\\1;?"}, Row{"NowhereInTheText", "(?:Z|zz)[0-9]"},
                    Row{"ManyGroups",
                        "(Q)|(R)|(S)|(T)|(U)|(V)|(W)|(Y)|(Z)|(B)|(C)|(D)|(E)|(F)|(G)|(H)|(I)|(J)|(K)|(L)|"
                        "(M)|(N)|(O)|(P)|(c)|(d)|(e)|(f)|(g)|(h)|(i)|(j)|(k)|(X)|(;)|(1)"},
                    Row{"OneFirstCharacter", "q[qa]"}, Row{"PlainText", "a;"},
                    Row{"PlainTextInAnyCase", "AB;", "i"}),
    [](const auto &row) { return row.param.name; });

} // namespace
