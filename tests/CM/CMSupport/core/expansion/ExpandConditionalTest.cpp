#include "tests/CM/CMSupport/core/expansion/ExpansionFixture.h"

namespace {

class ExpandConditional : public ExpansionFixture {
  protected:
    ExpandConditional() {
        give("yes", "x");
        give("no", "");
    }
};

TEST_F(ExpandConditional, TakesTheThenTextOfATrueCondition) {
    EXPECT_EQ(expand("co ($yes ? -l : -u) f"), "co -l f");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandConditional, TakesTheElseTextOfAFalseCondition) {
    EXPECT_EQ(expand("co ($no ? -l : -u) f"), "co -u f");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandConditional, LeavesNothingOfAFalseConditionWithoutAnElseText) {
    EXPECT_EQ(expand("co ($no ? -l)f"), "co f");
    EXPECT_EQ(expand("co ($yes ? -l)f"), "co -lf");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandConditional, TakesAnEmptyConditionAsFalse) {
    EXPECT_EQ(expand("( ? a : b)"), "b");
    EXPECT_EQ(expand("(? a : b)"), "b");
}

TEST_F(ExpandConditional, TrimsBlanksButNoOtherWhiteSpaceOfTheParts) {
    EXPECT_EQ(expand("<(  $yes  ?   a b   :  c  )>"), "<a b>");
    EXPECT_EQ(expand("<($yes ?\ta\n: c)>"), "<\ta\n>");
}

TEST_F(ExpandConditional, LeavesTheResultOfAConditionalThatLeavesNothingUntouched) {
    EXPECT_EQ(expand("($no ? a : )"), "untouched");
    EXPECT_EQ(status, 1);
    EXPECT_EQ(expand("($yes ? )"), "untouched");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandConditional, SucceedsWithNothingAlsoIfTheConditionFailed) {
    EXPECT_EQ(expand("($nobody ? a : b)"), "untouched");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandConditional, ExpandsOnlyTheChosenPart) {
    AnyArgument &skipped = give("skipped", "s");
    expand("($yes ? a : $skipped)");
    expand("($no ? $skipped : b)");
    EXPECT_EQ(skipped.taken, 0);
    EXPECT_EQ(expand("($yes ? a : $nobody)"), "a");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandConditional, DropsAConditionalWhoseConditionIsUnresolved) {
    EXPECT_EQ(expand("co ($nobody ? a : b)x"), "co x");
    EXPECT_EQ(status, 0);
}

TEST_F(ExpandConditional, EmptiesArgumentsBehindAConditionThatFailed) {
    AnyArgument &label = give("label", "v1");
    EXPECT_EQ(expand("co ($nobody ? a : b)[$label]"), "co []");
    EXPECT_EQ(status, 0);
    EXPECT_EQ(label.taken, 1);
}

TEST_F(ExpandConditional, StillPutsInPropertiesBehindAConditionThatFailed) {
    setToolProperty("Flags", "-q");
    EXPECT_EQ(expand("($nobody ? a : b)[$Flags]"), "[-q]");
    EXPECT_EQ(status, 0);
}

TEST_F(ExpandConditional, FailsIfTheChosenPartFailsAndShowsIt) {
    EXPECT_EQ(expand("($yes ? a $nobody) b"), "a $nobody b");
    EXPECT_EQ(status, 0);
}

TEST_F(ExpandConditional, TakesTheLastParenthesisAsTheEndOfAConditional) {
    EXPECT_EQ(expand("($yes ? a : b) c)d"), "ad");
    EXPECT_EQ(expand("($no ? a : b) c)d"), "b) cd");
}

TEST_F(ExpandConditional, SwallowsASecondConditionalIntoTheLastPartOfTheFirst) {
    EXPECT_EQ(expand("($yes ? a : b) ($yes ? c : d)"), "a");
    EXPECT_EQ(status, 1);
    // The first one takes the second one's parenthesis, so that the second has no end in the part that it is in.
    EXPECT_EQ(expand("($no ? a : b) ($yes ? c : d)"), "b) (x ? c : d");
    EXPECT_EQ(status, 1);
    // Of three, the middle one is complete in that part.
    EXPECT_EQ(expand("($no ? a : b) ($yes ? c : d) ($yes ? e : f)"), "b) c (x ? e : f");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandConditional, NestsInTheElsePart) {
    EXPECT_EQ(expand("($no ? a : ($no ? b : ($yes ? c : d)))"), "c");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandConditional, NestsInTheThenPartIfThereIsNoColon) {
    EXPECT_EQ(expand("<($yes ? a ($yes ? b))>"), "<a b>");
    EXPECT_EQ(expand("<($yes ? a ($no ? b))>"), "<a >");
}

TEST_F(ExpandConditional, EndsTheThenPartAtAColonOfADriveLetter) {
    EXPECT_EQ(expand("($yes ? C:\\models : D:\\models)"), "C");
    EXPECT_EQ(expand("($no ? C:\\models : D:\\models)"), "\\models : D:\\models");
}

TEST_F(ExpandConditional, LeavesAColonToTheCondition) {
    EXPECT_EQ(expand("(a:b ? c : d)"), "c");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandConditional, LeavesAParenthesisWithoutAQuestionMark) {
    EXPECT_EQ(expand("co (all) $yes"), "co (all) x");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandConditional, LeavesAConditionalWithoutAClosingParenthesis) {
    EXPECT_EQ(expand("(a ? b"), "(a ? b");
    EXPECT_EQ(status, 1);
    EXPECT_EQ(expand("(a ? b : c"), "(a ? b : c");
    EXPECT_EQ(expand("(a) ? b"), "(a) ? b");
    EXPECT_EQ(expand("(a ? b) : c"), "(a ? b) : c") << "the colon comes first, and no parenthesis behind it";
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandConditional, StopsAtTheFirstParenthesisThatOpensNoConditional) {
    EXPECT_EQ(expand(") ($yes ? a)"), ") a");
    EXPECT_EQ(expand("(1) and ($yes ? a : b)"), "a") << "the condition begins at the first parenthesis";
}

TEST_F(ExpandConditional, ScansAReplacementForAFurtherConditional) {
    give("open", "(x ? y");
    EXPECT_EQ(expand("($yes ? $open ) )z"), "yz") << "the value and the text make a conditional together";
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandConditional, KeepsOnlyTheStatusOfTheLastConditional) {
    // The part of the first one fails, but the remaining text is a second one that succeeds without the failed
    // part.
    give("open", "(q ? y :");
    EXPECT_EQ(expand("($yes ? $open $nobody ) )z"), "yz");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandConditional, LeavesParenthesesOfAnArgumentAlone) {
    give("log", "fixed (see 5)");
    EXPECT_EQ(expand("ci -m'$log' f"), "ci -m'fixed (see 5)' f");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandConditional, MakesNoConditionalOfAnArgumentsParenthesisAndTheTemplatesText) {
    give("log", "a (b");
    EXPECT_EQ(expand("ci $log ? c )"), "ci a (b ? c )");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandConditional, ExpandsAConditionalInTheValueOfAnArgument) {
    give("log", "is it (done ? yes : no)");
    EXPECT_EQ(expand("<$log>"), "<is it yes>");
}

TEST_F(ExpandConditional, ExpandsAConditionalInTheValueOfAProperty) {
    setToolProperty("Flags", "($yes ? -l : -u)");
    EXPECT_EQ(expand("co $Flags f"), "co -l f");
}

TEST_F(ExpandConditional, TakesAConditionOfPlainTextAsTrue) { EXPECT_EQ(expand("(a ? b : c)"), "b"); }

} // namespace
