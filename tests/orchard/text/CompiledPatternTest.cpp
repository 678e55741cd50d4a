#include "orchard/text/CompiledPattern.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <span>

namespace {

using orchard::CompiledPattern;
using orchard::Span;

/// The groups 1 and 2 of a match of `text` on a place that holds old positions.
void expectNoGroups(const char *pattern, const char *text) {
    std::array<Span, 3> spans{Span{7, 9}, Span{7, 9}, Span{7, 9}};
    orchard::TimeAllowance time;
    ASSERT_TRUE(CompiledPattern(pattern, "").search(text, 0, false, time, std::span(spans))) << pattern;
    EXPECT_EQ(spans[0].begin, 0U) << pattern;
    EXPECT_EQ(spans[0].end, 1U) << pattern;
    for (const std::size_t group : {1U, 2U}) {
        EXPECT_EQ(spans[group].begin, Span::none) << pattern;
        EXPECT_EQ(spans[group].of(text), "") << pattern;
    }
}

TEST(CompiledPattern, GroupsThatThePatternLacksOrThatTookNoPartHaveNoPlace) {
    expectNoGroups("a", "a");
    expectNoGroups("[a]", "a");
    expectNoGroups("a|(b)|(c)", "a");
    expectNoGroups("(?:(b)|a)(c)?", "a");
}

TEST(CompiledPattern, FindsNothingBehindTheText) {
    for (const char *const pattern : {"a", "[a]", "a*", "$"}) {
        std::array<Span, 1> spans;
        orchard::TimeAllowance time;
        EXPECT_FALSE(CompiledPattern(pattern, "").search("a", 2, false, time, std::span(spans))) << pattern;
        EXPECT_FALSE(CompiledPattern(pattern, "i").search("a", 2, false, time, std::span(spans))) << pattern;
    }
}

} // namespace
