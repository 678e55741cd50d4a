#include "tests/CM/CMSupport/questions/QuestionFixture.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class SyncQuestion : public QuestionFixture {};

struct Answer {
    const char *button;
    const char *response;
    int result;
};
class SyncQuestionAnswer : public QuestionFixture, public testing::WithParamInterface<Answer> {};

TEST_P(SyncQuestionAnswer, SetsTheResponseAndGivesTheResult) {
    EXPECT_EQ(press(GetParam().button), GetParam().result);
    EXPECT_EQ(CCMSyncQuestionDlg::m_response, GetParam().response);
    EXPECT_THAT(driver.problems(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Buttons, SyncQuestionAnswer,
                         testing::Values(Answer{"yes", "yes", 6}, Answer{"yesToAll", "yestoall", 6},
                                         Answer{"no", "no", 7}, Answer{"noToAll", "notoall", 7},
                                         Answer{"cancel", "cancel", 2}),
                         [](const auto &row) { return std::string(row.param.button); });

TEST_F(SyncQuestion, ShowsTheQuestionTheWarningIconAndEnablesCancelByDefault) {
    driver.onShown = [](CDialog &dialog) {
        EXPECT_EQ(dialog.control("text")->caption(), "Overwrite Pump.ocl?");
        EXPECT_EQ(dynamic_cast<CIcon &>(*dialog.control("icon")).icon(), CIcon::Kind::warning);
        EXPECT_TRUE(dialog.control("cancel")->isEnabled());
        EXPECT_TRUE(dynamic_cast<CButton &>(*dialog.control("no")).isDefault());
        EXPECT_FALSE(dialog.title().IsEmpty());
    };
    press("no");
    EXPECT_EQ(timesShown(), 1U);
}

TEST_F(SyncQuestion, WithTheCancelFlagOffCancelCannotBePressed) {
    EXPECT_EQ(ask({{"press cancel", "press no"}}, 0), 7);
    EXPECT_EQ(CCMSyncQuestionDlg::m_response, "no");
    EXPECT_THAT(driver.problems(), ElementsAre("CCMSyncQuestionDlg: press cancel: refused"));
}

TEST_F(SyncQuestion, YesToAllAnswersLaterQuestionsWithoutShowingThem) {
    press("yesToAll");
    EXPECT_EQ(ask(), 6);
    EXPECT_EQ(timesShown(), 1U);
}

TEST_F(SyncQuestion, NoToAllAnswersLaterQuestionsWithoutShowingThem) {
    press("noToAll");
    EXPECT_EQ(ask(), 7);
    EXPECT_EQ(timesShown(), 1U);
}

TEST_F(SyncQuestion, YesAndNoAndCancelHoldForOneQuestionOnly) {
    EXPECT_EQ(press("yes"), 6);
    EXPECT_EQ(press("no"), 7);
    EXPECT_EQ(press("cancel"), 2);
    EXPECT_EQ(press("yes"), 6);
    EXPECT_EQ(timesShown(), 4U);
}

TEST_F(SyncQuestion, ClosingTheWindowIsCancel) {
    EXPECT_EQ(ask({{"close"}}), 2);
    EXPECT_EQ(CCMSyncQuestionDlg::m_response, "cancel");
}

TEST_F(SyncQuestion, TheWindowCannotBeClosedWithTheCancelFlagOff) {
    EXPECT_EQ(ask({{"close", "press no"}}, 0), 7);
    EXPECT_EQ(ask({{"close"}}, 0), 7) << "nobody has answered";
}

/// Ends as soon as it is shown, without one of the five answers.
class EndedQuestion : public CCMSyncQuestionDlg {
    void OnInitDialog() override { EndDialog(IDCANCEL); }
};

TEST_F(SyncQuestion, AnyOtherResponseCountsAsYes) {
    EXPECT_EQ(EndedQuestion().DoModal(), 6) << "the empty text";
    CCMSyncQuestionDlg::m_response = "NoToAll";
    EXPECT_EQ(EndedQuestion().DoModal(), 6) << "the five words are compared byte by byte";
}

TEST_F(SyncQuestion, ADialogThatEndsWithoutAnAnswerLeavesThatOfTheQuestionBefore) {
    press("no");
    EXPECT_EQ(EndedQuestion().DoModal(), 7);
}

TEST_F(SyncQuestion, NobodyToAskIsNoAndTheOutputWindowTellsSo) {
    EXPECT_EQ(ask({{}}), 7) << "the driver has nobody";
    EXPECT_THAT(host.window.text(), HasSubstr("Overwrite Pump.ocl?"));
    host.environment.dialogDriver = nullptr;
    EXPECT_EQ(ask(), 7) << "no driver";
    host.environment.hasInterfaceToUser = false;
    EXPECT_EQ(ask(), 7) << "no interface to a user";
    EXPECT_EQ(CCMSyncQuestionDlg::m_response, "") << "the next question is asked again";
}

TEST_F(SyncQuestion, NobodyToAskIsNoWhateverTheAnswerBefore) {
    for (const char *const before : {"yes", "no", "cancel"}) {
        press(before);
        EXPECT_EQ(ask({{}}), 7) << before;
    }
}

TEST_F(SyncQuestion, AnAnswerForAllNeedsNobodyToAsk) {
    press("yesToAll");
    host.environment.hasInterfaceToUser = false;
    EXPECT_EQ(ask(), 6);
}

} // namespace
