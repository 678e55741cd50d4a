#include "CM/host/SPString.h"

#include "orchard/text/PatternReport.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace {

std::string substituted(SPString subject, const char *pattern, const char *replacement, const char *flags = "") {
    subject.s(pattern, replacement, flags);
    return subject.str();
}

const char *const variable = R"(\${?([a-zA-Z_][a-zA-Z0-9_]*)}?)";

TEST(Match, FindsThePatternAnywhere) {
    EXPECT_NE(SPString("RCS/a,v  -->  a").m("-->"), 0);
    EXPECT_EQ(SPString("RCS/a,v").m("-->"), 0);
}

TEST(Match, TakesNoAccountOfCaseWithTheFlagI) {
    EXPECT_EQ(SPString("co: ERROR").m("error"), 0);
    EXPECT_NE(SPString("co: ERROR").m("error", "i"), 0);
    EXPECT_EQ(SPString("co: ERROR").m("e.ror"), 0);
    EXPECT_NE(SPString("co: ERROR").m("e.ror", "i"), 0);
}

TEST(Match, TheSamePatternWithAndWithoutCaseAreTwo) {
    EXPECT_NE(SPString("ab").m("A.", "i"), 0);
    EXPECT_EQ(SPString("ab").m("A."), 0);
    EXPECT_NE(SPString("ab").m("A.", "i"), 0);
}

TEST(MatchList, HoldsTheWholeMatchAndThenTheGroups) {
    SPStringList list(20);
    ASSERT_NE(SPString("co ${mode} x").m(variable, list, "i"), 0);
    ASSERT_EQ(list.count(), 2);
    EXPECT_EQ(list[0].str(), "${mode}");
    EXPECT_EQ(list.shift().str(), "${mode}");
    EXPECT_EQ(list.shift().str(), "mode");
    EXPECT_EQ(list.count(), 0);
}

TEST(MatchList, AGroupThatTookNoPartIsEmpty) {
    SPStringList list;
    ASSERT_NE(SPString("b").m("(a)?(b)(c)?", list), 0);
    ASSERT_EQ(list.count(), 4);
    EXPECT_EQ(list[1].str(), "");
    EXPECT_EQ(list[2].str(), "b");
    EXPECT_EQ(list[3].str(), "");
}

TEST(MatchList, IsEmptiedWithoutAMatch) {
    SPStringList list;
    list.push("old");
    EXPECT_EQ(SPString("abc").m("x", list), 0);
    EXPECT_EQ(list.count(), 0);
}

TEST(MatchList, ALongNameIsTakenWhole) {
    SPStringList list;
    ASSERT_NE(SPString("$namepart rest").m(variable, list, "i"), 0);
    EXPECT_EQ(list[1].str(), "namepart");
}

TEST(Match, ALoneBraceIsOrdinary) {
    EXPECT_NE(SPString("a{").m("a{"), 0);
    EXPECT_NE(SPString("a}").m("a}"), 0);
    EXPECT_NE(SPString("{").m("^{$"), 0);
    EXPECT_NE(SPString("a{x").m("a{x"), 0);
}

TEST(Match, AClassOfABackslashFindsTheEscapedForm) {
    SPStringList list;
    ASSERT_NE(SPString(R"(x \$temp y)").m(R"([\]\$temp)", list, "i"), 0);
    EXPECT_EQ(list[0].str(), R"(\$temp)");
    EXPECT_EQ(SPString("$temp").m(R"([\]\$temp)", "i"), 0);
}

TEST(Match, TakesBytesThatAreNoUtf8AsBytes) {
    SPStringList list;
    ASSERT_NE(SPString(std::string("a\xff\xfe\x80z\0y", 7)).m("a(.*)y", list), 0);
    EXPECT_EQ(list[1].str(), std::string("\xff\xfe\x80z\0", 5));
    EXPECT_NE(SPString("\xc3").m("^.$"), 0);
}

TEST(Match, APatternCannotTurnUnicodeOn) {
    orchard::setPatternReporter([](const orchard::PatternProblem &) {});
    EXPECT_EQ(SPString("a\xff").m("(*UTF)a"), 0);
    orchard::setPatternReporter(nullptr);
}

TEST(Match, LineEndsBelongToTheirLine) {
    EXPECT_NE(SPString("one\ntwo\n").m("two$"), 0);
    EXPECT_EQ(SPString("one\ntwo\n").m("one$"), 0);
    EXPECT_NE(SPString("one\ntwo\n").m("^two", "m"), 0);
    EXPECT_EQ(SPString("one\ntwo").m("one.two"), 0);
    EXPECT_NE(SPString("one\ntwo").m("one.two", "s"), 0);
}

TEST(Match, BlanksCountUnlessTheFlagXIsGiven) {
    EXPECT_EQ(SPString("ab").m("a b"), 0);
    EXPECT_NE(SPString("ab").m("a b", "x"), 0);
}

TEST(Match, AnEmptyPatternMatchesTheEmptyText) {
    EXPECT_NE(SPString("abc").m(""), 0);
    EXPECT_NE(SPString("").m(""), 0);
}

TEST(Match, FindsThePlaceInATextOfManyMegabytes) {
    std::string text(40'000'000, 'a'); // NOLINT(bugprone-string-constructor): long, indeed
    text += "\nco: RCS/b,v: error\n";
    SPStringList list;
    ASSERT_NE(SPString(text).m(R"(^co: (\S+),v: error$)", list, "im"), 0);
    EXPECT_EQ(list[1].str(), "RCS/b");
    EXPECT_NE(SPString(text).m("Error", "i"), 0);
    EXPECT_NE(SPString(text).m("[b-z]o: [^a]", "i"), 0);
    EXPECT_EQ(SPString(text).m("[b-z]o; [^a]", "i"), 0);
    EXPECT_NE(SPString(text).m("(?:a|\n)++co"), 0) << "a group repeated forty million times";
}

TEST(Match, MatchesInEachStrideOfALongText) {
    for (const std::size_t at : {0U, 1U, 255U, 256U, 257U, 258U, 1281U, 1282U, 1283U, 30'000U, 49'998U}) {
        std::string text(50'000, '.');
        text.replace(at, 2, "xy");
        SPStringList list;
        ASSERT_NE(SPString(text).m("([x-z])(?<=x)y", list), 0) << at;
        EXPECT_EQ(list[0].str(), "xy");
        text[at + 1] = 'Y';
        ASSERT_NE(SPString(text).m("x[x-z]", "i"), 0) << at;
    }
}

TEST(Match, NoStartingPositionOfALongTextIsPassedOver) {
    for (std::size_t at = 1; at < 11'990; ++at) {
        std::string text(12'000, '.'); // long enough for several calls of the engine
        text.replace(at, 2, "xy");
        ASSERT_NE(SPString(text).m(R"([^\n]xy)"), 0) << at;
    }
}

TEST(Match, NoStartOfALineOfALongTextIsPassedOver) {
    for (std::size_t at = 1; at < 3000; ++at) {
        std::string text(12'000, '.');
        text.replace(at - 1, 2, "\nx");
        ASSERT_NE(SPString(text).m("^x", "m"), 0) << at;
    }
}

TEST(Match, AShortTextMayTakeManySteps) { EXPECT_NE(SPString("aaaaaaaaaaaaaac aab").m("(a+)+b"), 0); }

TEST(Match, OnlyANewlineEndsALine) {
    EXPECT_NE(SPString("a\rb").m("^a.b$"), 0);
    EXPECT_EQ(SPString("a\r\n").m("a$", "m"), 0);
    EXPECT_NE(SPString("a\r\n").m("a\r$", "m"), 0);
}

TEST(Match, AGroupMayRepeatThroughAMegabyte) {
    EXPECT_NE(SPString(std::string(1'000'000, 'a') + "c").m("(?:a|b)+c"), 0);
}

class CatastrophicPattern : public testing::Test {
  protected:
    CatastrophicPattern() {
        orchard::setPatternReporter([this](const orchard::PatternProblem &problem) { reason = problem.reason; });
    }
    ~CatastrophicPattern() override { orchard::setPatternReporter(nullptr); }
    std::string reason;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};

TEST_F(CatastrophicPattern, EndsSoonOnAShortText) {
    EXPECT_EQ(SPString(std::string(200, 'a') + "b").m("(a|a)*[cd]"), 0);
    EXPECT_EQ(reason, "it takes too long, because it tries too many combinations");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST_F(CatastrophicPattern, EndsSoonOnALongText) {
    EXPECT_EQ(SPString(std::string(3'000'000, 'a')).m("[ab]*[ac]*z"), 0);
    EXPECT_EQ(reason, "it takes too long, because it tries too many combinations");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST_F(CatastrophicPattern, GetsLessTimeEachTime) {
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(SPString(std::string(60, 'a') + "b").m("(?:a|a)*[ce]"), 0);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

TEST(Substitute, ReplacesTheFirstMatch) { EXPECT_EQ(substituted("$a $a", R"(\$A)", "x", "i"), "x $a"); }

TEST(Substitute, ReplacesAllMatchesWithTheFlagG) {
    SPString text("a-a-a");
    EXPECT_EQ(text.s("a", "bb", "g"), 3);
    EXPECT_EQ(text.str(), "bb-bb-bb");
}

TEST(Substitute, LeavesTheTextAloneWithoutAMatch) {
    SPString text("abc");
    EXPECT_EQ(text.s("x", "y"), 0);
    EXPECT_EQ(text.str(), "abc");
}

TEST(Substitute, ABackslashTakesAwayTheMeaningOfADollarOrABackslash) {
    EXPECT_EQ(substituted("x", "x", R"(\$name)"), "$name");
    EXPECT_EQ(substituted("x", "x", R"(\\)"), R"(\)");
    EXPECT_EQ(substituted("x", "x", R"(\\\$)"), R"(\$)");
    EXPECT_EQ(substituted("x", "x", R"(C:\new\)"), R"(C:\new\)");
    EXPECT_EQ(substituted("x", "x", "$1 costs $5"), "$1 costs $5");
}

TEST(Substitute, EscapesADollarForUseAsAPattern) {
    EXPECT_EQ(substituted("${name}", R"(\$)", R"(\\$)"), R"(\${name})");
}

TEST(Substitute, PutsAnEscapedVariableBackAsItWas) {
    EXPECT_EQ(substituted("co $nobody", R"(\$nobody)", R"(\$nobody)", "i"), "co $nobody");
}

TEST(Substitute, EmptyMatchesAdvance) {
    EXPECT_EQ(substituted("aab", "a*", "x", "g"), "xxbx");
    EXPECT_EQ(substituted("ab", "", "-", "g"), "-a-b-");
    EXPECT_EQ(substituted("ab", "^", "> "), "> ab");
}

TEST(Substitute, AnEmptyMatchIsFoundAtAnyDistanceFromTheLastOne) {
    for (std::size_t gap = 1; gap < 2500; ++gap) {
        SPString text("y" + std::string(gap, '.') + "y" + std::string(10'000, '.'));
        ASSERT_EQ(text.s("(?=y)", "-", "g"), 2) << gap;
    }
}

} // namespace
