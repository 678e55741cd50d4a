#include "orchard/text/PatternReport.h"

#include "CM/host/SPString.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class PatternReports : public testing::Test {
  protected:
    PatternReports() {
        orchard::setPatternReporter(
            [this](const orchard::PatternProblem &problem) { problems.push_back(problem); });
    }
    ~PatternReports() override {
        orchard::setPatternReporter(nullptr);
        orchard::setPatternOriginFinder(nullptr);
    }
    std::vector<orchard::PatternProblem> problems;
};

TEST_F(PatternReports, ABadPatternIsReportedWithItsPositionAndMatchesNothing) {
    EXPECT_EQ(SPString("anything").m("any(thing"), 0);
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].pattern, "any(thing");
    EXPECT_EQ(problems[0].position, 9U);
    EXPECT_NE(problems[0].reason.find("parenthesis"), std::string::npos) << problems[0].reason;
}

TEST_F(PatternReports, AreMadeOncePerPattern) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(SPString("x").m("once[per"), 0);
        EXPECT_EQ(SPString("x").m("once[per", "i"), 0);
    }
    EXPECT_EQ(problems.size(), 1U);
}

TEST_F(PatternReports, CountThePositionInThePatternAsItWasWritten) {
    EXPECT_EQ(SPString("x").m(R"([\]\$(here)"), 0);
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].position, 10U);
}

TEST_F(PatternReports, NameWhereThePatternComesFrom) {
    orchard::setPatternOriginFinder([](std::string_view pattern) {
        return pattern == "named(" ? "property \"OperationErrorPattern\" of RCS" : std::string();
    });
    EXPECT_EQ(SPString("x").m("named("), 0);
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].origin, "property \"OperationErrorPattern\" of RCS");
}

TEST_F(PatternReports, ATooLongPatternIsRefused) {
    EXPECT_EQ(SPString("x").m(std::string(100'000, '.')), 0);
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].reason, "it is longer than 60,000 bytes");
}

TEST(PatternProblemMessage, ShowsThePatternAndPointsAtThePlace) {
    const orchard::PatternProblem problem{"ab(c", 4, "missing closing parenthesis", "property \"P\""};
    EXPECT_EQ(problem.message(),
              "The pattern in property \"P\" can't be used: missing closing parenthesis, at "
              "character 5.\n    ab(c\n        ^\nIt counts as a pattern that matches nothing.");
}

TEST(PatternProblemMessage, ShowsNoControlCharactersAndNoEndlessLine) {
    const orchard::PatternProblem problem{std::string(5000, 'a') + "\x1b[2J(", 5005, "missing", ""};
    const std::string text = problem.message();
    EXPECT_EQ(text.find('\x1b'), std::string::npos);
    EXPECT_LT(text.size(), 500U);
}

} // namespace
