#include "CM/CMSupport/questions/CMAskOnCheckoutGuard.h"

#include "tests/CM/CMSupport/questions/QuestionFixture.h"

#include <stdexcept>

namespace {

class AskOnCheckoutGuard : public QuestionFixture {};

TEST_F(AskOnCheckoutGuard, KeepsAnAnswerForAllForItsLifeOnly) {
    {
        const CMAskOnCheckoutGuard guard;
        EXPECT_EQ(press("noToAll"), 7);
        EXPECT_EQ(ask(), 7);
        EXPECT_EQ(timesShown(), 1U);
    }
    EXPECT_EQ(CCMSyncQuestionDlg::m_response, "");
    EXPECT_EQ(press("yes"), 6);
    EXPECT_EQ(timesShown(), 2U);
}

TEST_F(AskOnCheckoutGuard, OnlyTheOutermostEmptiesTheAnswer) {
    const auto outer = std::make_unique<CMAskOnCheckoutGuard>();
    {
        const CMAskOnCheckoutGuard inner;
        press("yesToAll");
    }
    EXPECT_EQ(CCMSyncQuestionDlg::m_response, "yestoall");
    EXPECT_EQ(ask(), 6);
}

TEST_F(AskOnCheckoutGuard, EmptiesTheAnswerAfterAnExceptionToo) {
    try {
        const CMAskOnCheckoutGuard guard;
        press("noToAll");
        throw std::runtime_error("the command failed");
    } catch (const std::runtime_error &) {
    }
    EXPECT_EQ(CCMSyncQuestionDlg::m_response, "");
}

TEST_F(AskOnCheckoutGuard, WithoutOneAnAnswerForAllStands) {
    press("yesToAll");
    EXPECT_EQ(ask(), 6);
    EXPECT_EQ(ask(), 6);
    EXPECT_EQ(timesShown(), 1U);
}

} // namespace
