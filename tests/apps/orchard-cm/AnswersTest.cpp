#include "apps/orchard-cm/model/Answers.h"

#include "CM/platform/dialog/CDialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using namespace orchard_cm;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// A question whose buttons say what was pressed.
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

/// Somebody at a terminal, who presses one button or is not there.
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
    Journal journal;
    Question question{true};
    int ask(Answer answer, platform::DialogDriver *terminal = nullptr) {
        AnsweringDriver driver(answer, terminal, output, journal);
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
TEST_F(Answers, AreToldWithTheQuestion) {
    ask(Answer::no);
    EXPECT_EQ(err.str(), "orchard-cm: question: Pump.ocl is writable. Overwrite it? [no]\n");
    EXPECT_THAT(journal.questions(), ElementsAre("Pump.ocl is writable. Overwrite it?"));
}
TEST_F(Answers, ComeFromTheTerminalIfNoneIsGiven) {
    Somebody somebody(true);
    EXPECT_EQ(ask(Answer::ask, &somebody), IDYES);
    EXPECT_THAT(journal.questions(), ElementsAre("Pump.ocl is writable. Overwrite it?"));
}
TEST_F(Answers, AreNoWithNobodyThereAndThatIsSaidOnce) {
    EXPECT_EQ(ask(Answer::ask, nullptr), IDNO);
    EXPECT_EQ(question.pressed, "no");
    EXPECT_EQ(err.str(), "orchard-cm: question: Pump.ocl is writable. Overwrite it? [No: there is nobody to ask; "
                         "--yes, --no or --yes-to-all give an answer]\n");
}
TEST_F(Answers, AreNoWhereTheUserGoesAwayFromTheTerminal) {
    Somebody goneAway(false);
    EXPECT_EQ(ask(Answer::ask, &goneAway), IDNO);
    EXPECT_THAT(err.str(), HasSubstr("[No: there was no answer]"));
}
