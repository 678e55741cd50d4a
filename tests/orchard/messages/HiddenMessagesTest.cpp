#include "orchard/messages/HiddenMessages.h"

#include "CM/host/Messages.h"
#include "orchard/messages/ScriptedUser.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>

namespace {

class OneTimeBox : public testing::Test {
  protected:
    OneTimeBox() {
        setenv("XDG_CONFIG_HOME", root.c_str(), 1);
        orchard::setUserInterface(&user);
    }
    ~OneTimeBox() override {
        orchard::setUserInterface(nullptr);
        std::filesystem::remove_all(root);
    }
    static std::filesystem::path makeRoot() {
        std::string name = std::filesystem::temp_directory_path() / "orchard-hidden-XXXXXX";
        return mkdtemp(name.data());
    }
    static int box(const char *key) {
        return OneTimeMessageBox("Title", "Text", "Don't show this again", 1, key, MB_YESNO | MB_ICONQUESTION, 0);
    }
    const std::filesystem::path root = makeRoot();
    orchard::ScriptedUser user;
};

TEST_F(OneTimeBox, IsShownEachTimeUntilTheUserTurnsItOff) {
    user.answer({IDNO, false});
    user.answer({IDYES, true});
    EXPECT_EQ(box("key"), IDNO);
    EXPECT_EQ(box("key"), IDYES);
    EXPECT_EQ(user.questions().size(), 2U);
    EXPECT_EQ(user.questions()[0].message.title, "Title");
    EXPECT_EQ(user.questions()[0].checkBox, "Don't show this again");
    EXPECT_EQ(box("key"), IDYES) << "the answer that was given when it was turned off";
    EXPECT_EQ(user.questions().size(), 2U);
}

TEST_F(OneTimeBox, TurningOneOffLeavesTheOthers) {
    orchard::hideMessage("a key", IDYES);
    EXPECT_EQ(orchard::hiddenMessageAnswer("a key"), IDYES);
    EXPECT_EQ(orchard::hiddenMessageAnswer("a"), std::nullopt);
    EXPECT_EQ(orchard::hiddenMessageAnswer("key"), std::nullopt);
    EXPECT_EQ(orchard::hiddenMessageAnswer("a key b"), std::nullopt);
    EXPECT_EQ(orchard::hiddenMessageAnswer(""), std::nullopt);
}

TEST_F(OneTimeBox, ANobodysAnswerTurnsNothingOff) {
    EXPECT_EQ(box("key"), IDNO);
    EXPECT_EQ(orchard::hiddenMessageAnswer("key"), std::nullopt);
}

TEST_F(OneTimeBox, AKeyOfSeveralLinesIsOneLineOfTheFile) {
    orchard::hideMessage("a\n6 b", IDNO);
    EXPECT_EQ(orchard::hiddenMessageAnswer("a\n6 b"), IDNO);
    EXPECT_EQ(orchard::hiddenMessageAnswer("b"), std::nullopt);
}

TEST_F(OneTimeBox, AFileOfRubbishTurnsNothingOff) {
    std::filesystem::create_directories(root / "orchard");
    std::ofstream(orchard::hiddenMessagesFile()) << "\xff\xfe\n6\n 6 key\n99999999999999 key\nx key\n";
    EXPECT_EQ(orchard::hiddenMessageAnswer("key"), std::nullopt);
}

TEST_F(OneTimeBox, AnAnswerThatTheBoxDoesNotHaveTurnsNothingOff) {
    std::filesystem::create_directories(root / "orchard");
    std::ofstream(orchard::hiddenMessagesFile()) << "4711 key\n";
    user.answer({IDYES, false});
    EXPECT_EQ(box("key"), IDYES);
    EXPECT_EQ(user.questions().size(), 1U);
}

TEST_F(OneTimeBox, AnAnswerForTheWholeRunCountsBeforeTheRememberedOne) {
    orchard::hideMessage("key", IDYES);
    orchard::setAnswerPolicy(orchard::AnswerPolicy::no);
    EXPECT_EQ(box("key"), IDNO);
    orchard::setAnswerPolicy(orchard::AnswerPolicy::ask);
    EXPECT_EQ(box("key"), IDYES);
    EXPECT_TRUE(user.questions().empty());
}

TEST_F(OneTimeBox, APipeInThePlaceOfTheFileKeepsNobodyWaiting) {
    std::filesystem::create_directories(root / "orchard");
    ASSERT_EQ(mkfifo(orchard::hiddenMessagesFile().c_str(), 0600), 0);
    orchard::hideMessage("key", IDYES);
    EXPECT_EQ(orchard::hiddenMessageAnswer("key"), std::nullopt);
}

TEST_F(OneTimeBox, APlaceThatCannotBeWrittenIsSurvived) {
    setenv("XDG_CONFIG_HOME", "/proc/no/such", 1);
    orchard::hideMessage("key", IDYES);
    EXPECT_EQ(orchard::hiddenMessageAnswer("key"), std::nullopt);
}

} // namespace
