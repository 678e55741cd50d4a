#include "apps/orchard-cm/model/Answers.h"

#include "CM/platform/dialog/CDialog.h"
#include "apps/orchard-cm/base/Interrupt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using namespace orchard_cm;
using testing::HasSubstr;

namespace {

/// A question that records which button was pressed.
class Question : public CDialog {
  public:
    explicit Question(bool withAll) : CDialog("Question") { yesToAll.ShowWindow(withAll); }
    std::string pressed;
    CStatic text{*this, "text", "Pump.ocl is writable. Overwrite it?"};
    CButton yes{*this, "yes", "Yes", [this] { press("yes", IDYES); }};
    CButton yesToAll{*this, "yesToAll", "Yes to all", [this] { press("yesToAll", IDYES); }};
    CButton no{*this, "no", "No", [this] { press("no", IDNO); }};

  private:
    void press(const char *button, int result) {
        pressed = button;
        EndDialog(result);
    }
};

/// A user at a terminal who presses one button, or no user at all.
class Somebody : public platform::DialogDriver {
  public:
    explicit Somebody(bool there) : there_(there) {}
    bool run(CDialog &dialog) override {
        return there_ && dynamic_cast<CButton &>(*dialog.control("yes")).press();
    }

  private:
    bool there_;
};

struct Answers : testing::Test {
    std::ostringstream out;
    std::ostringstream err;
    Output output{Output::Form::text, out, err, false};
    Question question{true};
    int ask(Answer answer, platform::DialogDriver *terminal = nullptr) {
        AnsweringDriver driver(answer, terminal, output);
        return question.DoModal(&driver);
    }
};

} // namespace

TEST_F(Answers, PressTheButtonOfTheOption) {
    EXPECT_EQ(ask(Answer::yes), IDYES);
    EXPECT_EQ(question.pressed, "yes");
    EXPECT_EQ(ask(Answer::no), IDNO);
    EXPECT_EQ(question.pressed, "no");
    EXPECT_EQ(ask(Answer::yesToAll), IDYES);
    EXPECT_EQ(question.pressed, "yesToAll");
}
TEST_F(Answers, FallBackToYesWhereThereIsNoYesToAll) {
    question.yesToAll.ShowWindow(false);
    EXPECT_EQ(ask(Answer::yesToAll), IDYES);
    EXPECT_EQ(question.pressed, "yes");
}
TEST_F(Answers, AreShownWithTheQuestion) {
    ask(Answer::no);
    EXPECT_EQ(err.str(), "orchard-cm: question: Pump.ocl is writable. Overwrite it? [No]\n");
}
TEST_F(Answers, ComeFromTheTerminalIfNoneIsGiven) {
    Somebody somebody(true);
    EXPECT_EQ(ask(Answer::ask, &somebody), IDYES);
}
TEST_F(Answers, AreNoWithNobodyThereAndThatIsSaidOnce) {
    EXPECT_EQ(ask(Answer::ask, nullptr), IDNO);
    EXPECT_EQ(question.pressed, "no");
    EXPECT_EQ(err.str(), "orchard-cm: question: Pump.ocl is writable. Overwrite it? [No: there is nobody to ask; "
                         "answer with --yes, --no or --yes-to-all]\n");
}
TEST_F(Answers, AreNoWhereTheUserGoesAwayFromTheTerminal) {
    Somebody goneAway(false);
    EXPECT_EQ(ask(Answer::ask, &goneAway), IDNO);
    EXPECT_THAT(err.str(), HasSubstr("[No: there was no answer]"));
}
TEST_F(Answers, AreKnownInAdvanceWhereAnOptionGivesOne) {
    EXPECT_TRUE(AnsweringDriver(Answer::yes, nullptr, output).answersInAdvance(question));
    EXPECT_FALSE(AnsweringDriver(Answer::ask, nullptr, output).answersInAdvance(question));
}
TEST_F(Answers, AreNoAfterCtrlCWhateverTheOptionsSay) {
    setInterrupted(true);
    for (const Answer answer : {Answer::ask, Answer::no, Answer::yes, Answer::yesToAll}) {
        Somebody somebody(true);
        EXPECT_EQ(ask(answer, &somebody), IDNO);
        EXPECT_EQ(question.pressed, "no");
    }
    setInterrupted(false);
    EXPECT_EQ(err.str(), "") << "that it was interrupted is said once, at the end";
}
TEST_F(Answers, OfAQuestionWithoutASafeButtonAreNone) {
    question.no.ShowWindow(false);
    EXPECT_EQ(ask(Answer::ask), dialogNotAnswered);
    EXPECT_EQ(ask(Answer::no), dialogNotAnswered);
    EXPECT_EQ(question.pressed, "");
}

namespace {

/// A message box with one button.
class Notice : public CDialog {
  public:
    explicit Notice(CIcon::Kind kind) : CDialog("Notice") { icon.SetIcon(kind); }
    CIcon icon{*this, "icon"};
    CStatic text{*this, "text", "Timed out"};
    CButton ok{*this, "ok", "OK", [this] { OnOK(); }};
};

} // namespace

TEST_F(Answers, AMessageIsShownWithItsKindAndNeedsNobody) {
    AnsweringDriver driver(Answer::no, nullptr, output);
    for (const auto kind :
         {CIcon::Kind::none, CIcon::Kind::information, CIcon::Kind::warning, CIcon::Kind::error}) {
        EXPECT_EQ(Notice(kind).DoModal(&driver), IDOK);
    }
    EXPECT_EQ(err.str(), "orchard-cm: Timed out\norchard-cm: Timed out\norchard-cm: warning: Timed out\n"
                         "orchard-cm: error: Timed out\n");
}
