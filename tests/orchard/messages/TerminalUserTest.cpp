#include "orchard/messages/TerminalUser.h"

#include "CM/host/Messages.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using orchard::MessageKind;
using orchard::Question;
using orchard::Reply;

Question yesNoQuestion() {
    Question question;
    question.message = {MessageKind::question, {}, "Overwrite?"};
    question.buttons = {{IDYES, "Yes"}, {IDNO, "No"}};
    question.defaultButton = IDNO;
    question.safeButton = IDNO;
    return question;
}

struct Asked {
    std::optional<Reply> reply;
    std::string shown;
};

Asked ask(const Question &question, const std::string &typed) {
    std::istringstream input(typed);
    std::ostringstream output;
    orchard::TerminalUser user(input, output);
    Asked asked;
    asked.reply = user.ask(question);
    asked.shown = output.str();
    return asked;
}

TEST(TerminalUser, ShowsMessagesWithTheirKind) {
    std::istringstream input;
    std::ostringstream output;
    orchard::TerminalUser user(input, output);
    user.show({MessageKind::error, {}, "bad"});
    user.show({MessageKind::warning, "Title", "hm"});
    user.show({MessageKind::information, {}, "well\x1b[0m"});
    EXPECT_EQ(output.str(), "Error: bad\nTitle\nWarning: hm\nwell?[0m\n");
}

TEST(TerminalUser, TakesANumberAWordOrTheDefault) {
    EXPECT_EQ(ask(yesNoQuestion(), "1\n").reply->button, IDYES);
    EXPECT_EQ(ask(yesNoQuestion(), " y \n").reply->button, IDYES);
    EXPECT_EQ(ask(yesNoQuestion(), "\n").reply->button, IDNO);
    EXPECT_EQ(ask(yesNoQuestion(), "NO").reply->button, IDNO);
}

TEST(TerminalUser, ShowsTheButtonsWithTheirNumbers) {
    EXPECT_EQ(ask(yesNoQuestion(), "1\n").shown, "Overwrite?\n1) Yes  2) No  [No] ");
}

TEST(TerminalUser, AsksAgainUntilTheAnswerIsUnderstood) {
    const Asked asked = ask(yesNoQuestion(), "maybe\n7\nyes\n");
    ASSERT_TRUE(asked.reply);
    EXPECT_EQ(asked.reply->button, IDYES);
}

TEST(TerminalUser, TheEndOfTheInputIsNoAnswer) {
    EXPECT_FALSE(ask(yesNoQuestion(), "").reply);
    EXPECT_FALSE(ask(yesNoQuestion(), "maybe\n").reply);
}

TEST(TerminalUser, AsksWhetherToAskAgainOnlyWhereTheBoxHasIt) {
    EXPECT_FALSE(ask(yesNoQuestion(), "1\ny\n").reply->doNotAskAgain);
    Question question = yesNoQuestion();
    question.checkBox = "Don't show this again";
    EXPECT_TRUE(ask(question, "1\ny\n").reply->doNotAskAgain);
    EXPECT_FALSE(ask(question, "1\n\n").reply->doNotAskAgain);
    EXPECT_FALSE(ask(question, "1\n").reply->doNotAskAgain);
}

} // namespace
