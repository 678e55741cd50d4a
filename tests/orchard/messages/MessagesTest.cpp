#include "CM/host/Messages.h"

#include "orchard/messages/DialogSetup.h"
#include "orchard/messages/ScriptedDialogDriver.h"
#include "orchard/base/LogFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Messages : public testing::Test {
  protected:
    Messages() {
        setenv("XDG_CONFIG_HOME", "/no/such/directory", 1);
        orchard::setDialogDriver(&user);
        orchard::setLogListener([this](std::string_view text) { log.append(text).append("\n"); });
    }
    ~Messages() override {
        orchard::setDialogDriver(nullptr);
        orchard::setLogListener({});
    }
    static int ask(unsigned int flags) { return notifyUserAndAsk("Really?", flags, 0, messageLevelDefault); }
    [[nodiscard]] std::vector<std::string> texts() const {
        std::vector<std::string> texts;
        for (const auto &notice : user.notices()) {
            texts.push_back(notice.text.str());
        }
        return texts;
    }
    orchard::ScriptedDialogDriver user;
    std::string log;
};

constexpr unsigned int yesNo = MB_YESNO | MB_ICONQUESTION;
constexpr unsigned int yesNoCancel = MB_YESNOCANCEL | MB_ICONQUESTION;

TEST_F(Messages, ATextIsShownAndLogged) {
    notifyUser("Timed out", messageLevelDefault);
    EXPECT_THAT(texts(), ElementsAre("Timed out"));
    EXPECT_EQ(user.notices()[0].icon, CIcon::Kind::none);
    EXPECT_EQ(log, "Timed out\n");
}

TEST_F(Messages, ABoxWithOneButtonShowsItsIcon) {
    EXPECT_EQ(ask(MB_ICONHAND), IDOK);
    EXPECT_EQ(ask(MB_ICONEXCLAMATION), IDOK);
    EXPECT_EQ(ask(MB_ICONINFORMATION), IDOK);
    ASSERT_EQ(user.notices().size(), 3U);
    EXPECT_EQ(user.notices()[0].icon, CIcon::Kind::error);
    EXPECT_EQ(user.notices()[1].icon, CIcon::Kind::warning);
    EXPECT_EQ(user.notices()[2].icon, CIcon::Kind::information);
    EXPECT_THAT(user.shown(), IsEmpty()) << "there is nothing to decide";
    EXPECT_EQ(log, "Really?\nReally?\nReally?\n");
}

TEST_F(Messages, AQuestionGivesTheButtonThatEndedIt) {
    user.play("MessageBox", {"press yes"});
    user.play("MessageBox", {"press cancel"});
    user.play("MessageBox", {"press cancel", "press no"});
    EXPECT_EQ(ask(yesNo), IDYES);
    EXPECT_EQ(ask(yesNoCancel), IDCANCEL);
    EXPECT_EQ(ask(yesNo), IDNO);
    EXPECT_THAT(user.problems(), ElementsAre("MessageBox: press cancel: refused"));
    EXPECT_EQ(log, "Really? [Yes]\nReally? [Cancel]\nReally? [No]\n");
}

TEST_F(Messages, AQuestionShowsItsTextItsIconAndItsDefaultButton) {
    user.onShown = [](CDialog &box) {
        EXPECT_EQ(box.prompt(), "Really?");
        EXPECT_EQ(box.icon(), CIcon::Kind::question);
        EXPECT_TRUE(box.button("yes")->isDefault());
        EXPECT_FALSE(box.button("no")->isDefault());
        EXPECT_EQ(box.button("ok"), nullptr);
    };
    ask(yesNo);
    user.onShown = [](CDialog &box) {
        EXPECT_FALSE(box.button("yes")->isDefault());
        EXPECT_TRUE(box.button("no")->isDefault());
    };
    ask(yesNo | MB_DEFBUTTON2);
    EXPECT_EQ(user.shown().size(), 2U);
}

TEST_F(Messages, ClosingAQuestionIsCancelAndRefusedWithoutThatButton) {
    user.play("MessageBox", {"close"});
    EXPECT_EQ(ask(yesNoCancel), IDCANCEL);
    user.play("MessageBox", {"close"});
    EXPECT_EQ(ask(yesNo), IDNO) << "nobody has answered";
}

TEST_F(Messages, WithNobodyToAskTheSafeAnswerIsTakenAndShown) {
    EXPECT_EQ(ask(yesNo), IDNO);
    EXPECT_EQ(ask(yesNoCancel), IDNO);
    EXPECT_THAT(texts(),
                ElementsAre("Really? [No: there is nobody to ask]", "Really? [No: there is nobody to ask]"));
    EXPECT_EQ(user.notices()[0].icon, CIcon::Kind::question);
    EXPECT_EQ(log, "Really? [No: there is nobody to ask]\nReally? [No: there is nobody to ask]\n");
}

TEST_F(Messages, WithoutADriverTheyGoToTheErrorStreamAndTheSafeAnswerIsTaken) {
    orchard::setDialogDriver(nullptr);
    testing::internal::CaptureStderr();
    notifyUser("Timed out", messageLevelDefault);
    EXPECT_EQ(ask(yesNo), IDNO);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Timed out\nReally? [No: there is nobody to ask]\n");
}

TEST_F(Messages, AreNotShownWhileSilencedButLogged) {
    {
        const SilenceMessageObject outer(1);
        { const SilenceMessageObject inner(1); }
        notifyUser("quiet", messageLevelDefault);
        EXPECT_EQ(ask(MB_ICONHAND), IDOK);
        EXPECT_EQ(ask(yesNo), IDNO) << "nobody can answer what isn't shown";
    }
    EXPECT_THAT(texts(), IsEmpty());
    EXPECT_THAT(user.shown(), IsEmpty());
    EXPECT_EQ(log, "quiet\nReally?\nReally? [No: there is nobody to ask]\n");
    notifyUser("loud", messageLevelDefault);
    EXPECT_THAT(texts(), ElementsAre("loud"));
}

} // namespace
