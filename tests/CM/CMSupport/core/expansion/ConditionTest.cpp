#include "tests/CM/CMSupport/core/expansion/ExpansionFixture.h"

namespace {

class ExtractCondition : public ExpansionFixture {
  protected:
    int extract(const CString &source) {
        return CMProperty::ExtractCondition(source, start, end, ifPart, thenPart, elsePart, scratch);
    }
    void expectFailure(const CString &source, const std::string &line) {
        traceOn();
        ifPart = thenPart = elsePart = "before";
        start = end = 7;
        shown.str("");
        EXPECT_EQ(extract(source), 0) << source;
        EXPECT_EQ(start, -1);
        EXPECT_EQ(end, -1);
        EXPECT_EQ(ifPart + thenPart + elsePart, "");
        EXPECT_EQ(shown.str(), line);
    }
    int start = 7;
    int end = 7;
    CString ifPart, thenPart, elsePart, scratch;
};

TEST_F(ExtractCondition, GivesThePositionsOfTheParentheses) {
    ASSERT_EQ(extract("ab(c ? d : e)fg"), 1);
    EXPECT_EQ(start, 2);
    EXPECT_EQ(end, 12);
    EXPECT_EQ(ifPart, "c");
    EXPECT_EQ(thenPart, "d");
    EXPECT_EQ(elsePart, "e");
}

TEST_F(ExtractCondition, GivesThePositionsWithoutAnElsePart) {
    ASSERT_EQ(extract("ab(c ? d)fg"), 1);
    EXPECT_EQ(start, 2);
    EXPECT_EQ(end, 8);
    EXPECT_EQ(ifPart, "c");
    EXPECT_EQ(thenPart, "d");
    EXPECT_EQ(elsePart, "");
}

TEST_F(ExtractCondition, TakesTheLastParenthesisOfTheText) {
    ASSERT_EQ(extract("(a ? b) (c ? d)"), 1);
    EXPECT_EQ(end, 14);
    EXPECT_EQ(thenPart, "b) (c ? d");
}

TEST_F(ExtractCondition, FailsSilentlyWithoutAParenthesis) {
    expectFailure("a ? b : c)", "");
    expectFailure("", "");
}

TEST_F(ExtractCondition, TracesAMissingQuestionMark) {
    expectFailure("? (a : b)", "+++ could not find the then part\n");
}

TEST_F(ExtractCondition, TracesAMissingEndBehindTheThenPart) {
    expectFailure("(a) ? b", "+++ could not find the condition end after the then part\n");
}

TEST_F(ExtractCondition, TracesAMissingEndBehindTheElsePart) {
    expectFailure("(a ? b) : c", "+++ could not find the condition end after the else part\n");
}

TEST_F(ExtractCondition, TracesThePartsItFound) {
    traceOn();
    extract("x( a ?  b :c  )");
    EXPECT_EQ(shown.str(), "+++ if: 'a' Then: 'b' Else: 'c'\n");
}

TEST_F(ExtractCondition, MayWriteAPartOverTheSource) {
    CString source = "(a ? b : c)";
    ASSERT_EQ(CMProperty::ExtractCondition(source, start, end, source, thenPart, elsePart, scratch), 1);
    EXPECT_EQ(source, "a");
    EXPECT_EQ(elsePart, "c");
}

} // namespace
