#include "CM/host/Messages.h"

#include "orchard/messages/ScriptedUser.h"
#include "orchard/settings/LogFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

using orchard::AnswerPolicy;
using orchard::MessageKind;

class Messages : public testing::Test {
  protected:
    Messages() {
        setenv("XDG_CONFIG_HOME", "/no/such/directory", 1);
        orchard::setUserInterface(&user);
        orchard::setLogListener([this](std::string_view text) { log.append(text).append("\n"); });
    }
    ~Messages() override {
        orchard::setUserInterface(nullptr);
        orchard::setAnswerPolicy(AnswerPolicy::ask);
        orchard::setLogListener({});
    }
    int ask(unsigned int flags) { return notifyUserAndAsk("Really?", flags, 0, messageLevelDefault); }
    orchard::ScriptedUser user;
    std::string log;
};

constexpr unsigned int yesNo = MB_YESNO | MB_ICONQUESTION;
constexpr unsigned int yesNoCancel = MB_YESNOCANCEL | MB_ICONQUESTION;

TEST_F(Messages, ATextIsShownAndLogged) {
    notifyUser("Timed out", messageLevelDefault);
    ASSERT_EQ(user.messages().size(), 1U);
    EXPECT_EQ(user.messages()[0].text, "Timed out");
    EXPECT_EQ(user.messages()[0].kind, MessageKind::information);
    EXPECT_EQ(log, "Timed out\n");
}

TEST_F(Messages, ABoxWithOneButtonIsAMessageOfItsKind) {
    EXPECT_EQ(ask(MB_ICONHAND), IDOK);
    EXPECT_EQ(ask(MB_ICONEXCLAMATION), IDOK);
    EXPECT_EQ(ask(MB_ICONINFORMATION), IDOK);
    ASSERT_EQ(user.messages().size(), 3U);
    EXPECT_EQ(user.messages()[0].kind, MessageKind::error);
    EXPECT_EQ(user.messages()[1].kind, MessageKind::warning);
    EXPECT_EQ(user.messages()[2].kind, MessageKind::information);
    EXPECT_TRUE(user.questions().empty());
}

TEST_F(Messages, AQuestionGivesTheButtonThatEndedIt) {
    user.answer({IDYES, false});
    user.answer({IDCANCEL, false});
    EXPECT_EQ(ask(yesNo), IDYES);
    EXPECT_EQ(ask(yesNoCancel), IDCANCEL);
    ASSERT_EQ(user.questions().size(), 2U);
    EXPECT_EQ(user.questions()[0].buttons.size(), 2U);
    EXPECT_EQ(user.questions()[1].buttons.size(), 3U);
    EXPECT_EQ(log, "Really? [Yes]\nReally? [Cancel]\n");
}

TEST_F(Messages, TheSecondButtonIsTheDefaultWhenToldSo) {
    user.answer({IDNO, false});
    user.answer({IDNO, false});
    ask(yesNo);
    ask(yesNo | MB_DEFBUTTON2);
    EXPECT_EQ(user.questions()[0].defaultButton, IDYES);
    EXPECT_EQ(user.questions()[1].defaultButton, IDNO);
}

TEST_F(Messages, WithNobodyToAskTheSafeAnswerIsTakenAndSaid) {
    EXPECT_EQ(ask(yesNo), IDNO);
    EXPECT_EQ(ask(yesNoCancel), IDNO);
    ASSERT_EQ(user.messages().size(), 2U);
    EXPECT_EQ(user.messages()[0].text, "Really? [No: there is nobody to ask]");
}

TEST_F(Messages, WithoutAUserTheSafeAnswerIsTaken) {
    orchard::setUserInterface(nullptr);
    testing::internal::CaptureStderr();
    EXPECT_EQ(ask(yesNo), IDNO);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Really? [No: there is nobody to ask]\n");
}

TEST_F(Messages, AnAnswerThatTheBoxDoesNotHaveCountsAsNone) {
    user.answer({IDCANCEL, false});
    EXPECT_EQ(ask(yesNo), IDNO);
}

TEST_F(Messages, APolicyAnswersInThePlaceOfTheUser) {
    orchard::setAnswerPolicy(AnswerPolicy::yes);
    EXPECT_EQ(ask(yesNo), IDYES);
    EXPECT_EQ(ask(yesNoCancel), IDYES);
    orchard::setAnswerPolicy(AnswerPolicy::no);
    EXPECT_EQ(ask(yesNo), IDNO);
    EXPECT_TRUE(user.questions().empty());
    ASSERT_EQ(user.messages().size(), 3U);
    EXPECT_EQ(user.messages()[0].text, "Really? [Yes]");
    EXPECT_EQ(user.messages()[2].text, "Really? [No]");
}

TEST_F(Messages, AreNotShownWhileSilencedButLogged) {
    {
        const SilenceMessageObject outer(1);
        { const SilenceMessageObject inner(1); }
        notifyUser("quiet", messageLevelDefault);
        EXPECT_EQ(ask(MB_ICONHAND), IDOK);
        EXPECT_EQ(ask(yesNo), IDNO) << "nobody can answer what isn't shown";
    }
    EXPECT_TRUE(user.messages().empty());
    EXPECT_TRUE(user.questions().empty());
    EXPECT_NE(log.find("quiet\n"), std::string::npos);
    notifyUser("loud", messageLevelDefault);
    EXPECT_EQ(user.messages().size(), 1U);
}

} // namespace
