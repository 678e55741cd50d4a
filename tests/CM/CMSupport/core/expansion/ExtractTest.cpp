#include "tests/CM/CMSupport/core/expansion/ExpansionFixture.h"

namespace {

class Extract : public ExpansionFixture {};

TEST_F(Extract, TakesTheFirstGroupWithoutRegardToCase) {
    EXPECT_EQ(CMProperty::ExtractBySearchPattern("locker: (\\w+)", "x\nLOCKER: ann; rev 1", result, error), 1);
    EXPECT_EQ(result, "ann");
}

TEST_F(Extract, LeavesTheResultAndTracesWithoutAMatch) {
    traceOn();
    EXPECT_EQ(CMProperty::ExtractBySearchPattern("a(b)", "xyz", result, error), 0);
    EXPECT_EQ(result, "untouched");
    EXPECT_EQ(shown.str(), "+++ Failed to match 'a(b)' in 'xyz'\n");
}

TEST_F(Extract, GivesTheEmptyTextForAPatternWithoutAGroup) {
    EXPECT_EQ(CMProperty::ExtractBySearchPattern("b", "abc", result, error), 1);
    EXPECT_EQ(result, "");
}

TEST_F(Extract, CountsABrokenPatternAsNoMatch) {
    EXPECT_EQ(CMProperty::ExtractBySearchPattern("(b", "abc", result, error), 0);
    EXPECT_EQ(result, "untouched");
}

TEST_F(Extract, TakesItsPatternFromAProperty) {
    setToolProperty(IPN::CMHeaderItsVersion, "rev ([0-9.]+)");
    int wasSet = 7;
    EXPECT_EQ(CMProperty::ExtractByProperty(IPN::CMHeaderItsVersion, "Rev 1.12", result, wasSet, error), 1);
    EXPECT_EQ(result, "1.12");
    EXPECT_EQ(wasSet, 1);
}

TEST_F(Extract, TellsThatThePatternWasSetAlsoIfItDoesNotMatch) {
    setToolProperty("Pattern", "a(b)");
    int wasSet = 7;
    EXPECT_EQ(CMProperty::ExtractByProperty("Pattern", "xyz", result, wasSet, error), 0);
    EXPECT_EQ(wasSet, 1);
}

TEST_F(Extract, EmptiesTheResultForAnEmptyPattern) {
    traceOn();
    setToolProperty("Pattern", "");
    int wasSet = 7;
    EXPECT_EQ(CMProperty::ExtractByProperty("Pattern", "xyz", result, wasSet, error), 1);
    EXPECT_EQ(wasSet, 0);
    EXPECT_EQ(result, "");
    EXPECT_EQ(shown.str(), "+++ The property 'Patternis empty'\n");
}

TEST_F(Extract, FailsForAMissingPatternAndLeavesAllAsItWas) {
    int wasSet = 7;
    EXPECT_EQ(CMProperty::ExtractByProperty("Pattern", "xyz", result, wasSet, error), 0);
    EXPECT_EQ(wasSet, 7);
    EXPECT_EQ(result, "untouched");
}

} // namespace
