#include "orchard/text/PatternDialect.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>

namespace {

using orchard::literalText;
using orchard::translatePattern;

struct Row {
    const char *name;
    const char *pattern;
    const char *translated;
    friend std::ostream &operator<<(std::ostream &stream, const Row &row) { return stream << row.pattern; }
};

class TranslatePattern : public testing::TestWithParam<Row> {};

TEST_P(TranslatePattern, GivesTheEngineWhatThePatternMeans) {
    EXPECT_EQ(translatePattern(GetParam().pattern).text, GetParam().translated);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TranslatePattern,
    testing::Values(Row{"AnOpenClassTakesItsBackslashAsItIs", R"([\]\$temp)", R"([\\]\$temp)"},
                    Row{"AllBackslashesOfAnOpenClassAreOrdinary", R"([a\b\]x)", R"([a\\b\\]x)"},
                    Row{"ANegatedOpenClass", R"([^\]x)", R"([^\\]x)"},
                    Row{"AClassThatClosesStaysAsItIs", R"([\]a]\$temp)", R"([\]a]\$temp)"},
                    Row{"AClosingBracketInTheFirstPlaceIsAMember", R"([]\]x)", R"([]\\]x)"},
                    Row{"OnlyTheOpenClassChanges", R"([\w.]+[\]x)", R"([\w.]+[\\]x)"},
                    Row{"ALaterClassClosesAnEarlierOne", R"([\]x[a-z])", R"([\]x[a-z])"},
                    Row{"TwoOpenClasses", R"([\]a[\]b)", R"([\\]a[\\]b)"},
                    Row{"AnEscapedBracketOpensNothing", R"(\[\]\$)", R"(\[\]\$)"},
                    Row{"NamedClassesDoNotClose", R"([[:alpha:]\]x)", R"([[:alpha:]\]x)"},
                    Row{"AQuotedBracketOpensNothing", R"(\Q[\]\E[\])", R"(\Q[\]\E[\\])"},
                    Row{"QuotedTextInAClass", R"([\Q]\E]x)", R"([\Q]\E]x)"},
                    Row{"ACommentHoldsNoClass", R"((?#[)a)", R"((?#[)a)"},
                    Row{"AControlCharacterIsOneEscape", R"(\c[a])", R"(\c[a])"},
                    Row{"WhatStaysOpenEitherWayIsLeftAlone", R"(a[b\)", R"(a[b\)"},
                    Row{"ALoneBraceStaysAsItIs", R"(\${?([a-z]*)}?)", R"(\${?([a-z]*)}?)"},
                    Row{"ABackslashAtTheEnd", R"(abc\)", R"(abc\)"}, Row{"NoPattern", "", ""}),
    [](const auto &row) { return row.param.name; });

TEST(TranslatePatternPositions, CountOnlyWhatWasWritten) {
    const auto translated = translatePattern(R"([\]a[\]()"); // becomes [\\]a[\\](
    EXPECT_EQ(translated.inserted, (std::vector<std::size_t>{1, 6}));
    EXPECT_EQ(translated.originalPosition(0), 0U);
    EXPECT_EQ(translated.originalPosition(4), 3U);
    EXPECT_EQ(translated.originalPosition(9), 7U);
}

TEST(TranslatePatternSpeed, ManyOpenClassesTakeTimeInProportion) {
    std::string pattern;
    for (int i = 0; i < 500'000; ++i) {
        pattern += R"([\]\)";
    }
    EXPECT_GT(translatePattern(pattern).text.size(), pattern.size());
}

struct LiteralRow {
    const char *name;
    const char *pattern;
    const char *text; ///< null if the pattern is not plain text
    friend std::ostream &operator<<(std::ostream &stream, const LiteralRow &row) { return stream << row.pattern; }
};

class LiteralText : public testing::TestWithParam<LiteralRow> {};

TEST_P(LiteralText, IsWhatAPatternWithoutMeaningStandsFor) {
    const auto text = literalText(GetParam().pattern);
    ASSERT_EQ(text.has_value(), GetParam().text != nullptr);
    if (text) {
        EXPECT_EQ(*text, GetParam().text);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, LiteralText,
    testing::Values(LiteralRow{"Words", "no such file", "no such file"},
                    LiteralRow{"AnEscapedDollar", R"(\$UnitPath)", "$UnitPath"},
                    LiteralRow{"AClassOfABackslash", R"([\]\$temp)", R"(\$temp)"},
                    LiteralRow{"AnEscapedBackslash", R"(\\)", R"(\)"},
                    LiteralRow{"BytesThatAreNoUtf8", "\xff\xfe", "\xff\xfe"}, LiteralRow{"ADot", "a.b", nullptr},
                    LiteralRow{"ADollar", "a$", nullptr}, LiteralRow{"ABrace", "a{2}", nullptr},
                    LiteralRow{"AnOptionalBrace", R"(\${?)", nullptr},
                    LiteralRow{"AClassOfDigits", R"(\d)", nullptr}, LiteralRow{"ABackReference", R"(\1)", nullptr},
                    LiteralRow{"ABackslashAtTheEnd", R"(a\)", nullptr},
                    LiteralRow{"AClassThatCloses", R"([\]a])", nullptr}, LiteralRow{"NoPattern", "", nullptr}),
    [](const auto &row) { return row.param.name; });

TEST(LiteralTextCharacters, WithAMeaningOfTheirOwnNeedTheEngine) {
    for (const char c : std::string("^$.[|()?*+{")) {
        EXPECT_EQ(literalText(std::string("a") + c), std::nullopt) << c;
        EXPECT_EQ(literalText(std::string("a\\") + c), std::string("a") + c) << c;
    }
}

} // namespace
