#include "orchard/text/PatternCheck.h"

#include <gtest/gtest.h>

using orchard::examinePattern;

TEST(PatternCheck, CountsGroups) {
    EXPECT_EQ(examinePattern("plain").groups, 0U);
    EXPECT_EQ(examinePattern("(a)(?:b)(c)").groups, 2U);
}
TEST(PatternCheck, TellsAMistakeAndItsPlaceInThePatternAsItWasWritten) {
    const auto facts = examinePattern("[\\]\\$temp(");
    EXPECT_FALSE(facts.mistake.empty());
    EXPECT_EQ(facts.position, std::optional<std::size_t>(10));
    EXPECT_TRUE(examinePattern("(?m)^a$").mistake.empty());
}
TEST(PatternCheck, TellsWhetherTheEmptyTextMatches) {
    EXPECT_TRUE(examinePattern("a*").matchesEmptyText);
    EXPECT_TRUE(examinePattern("a|").matchesEmptyText);
    EXPECT_FALSE(examinePattern("a+").matchesEmptyText);
}
