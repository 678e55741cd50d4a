#include "orchard/messages/HiddenMessages.h"

#include "CM/host/Messages.h"
#include "orchard/messages/DialogSetup.h"
#include "orchard/messages/ScriptedDialogDriver.h"
#include "tests/support/TemporaryDirectory.h"

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
        orchard::setDialogDriver(&user);
    }
    ~OneTimeBox() override { orchard::setDialogDriver(nullptr); }
    static int box(const char *key) {
        return OneTimeMessageBox("Title", "Text", "Don't show this again", 1, key, MB_YESNO | MB_ICONQUESTION, 0);
    }
    const support::TemporaryDirectory directory;
    const std::filesystem::path root = directory.path();
    orchard::ScriptedDialogDriver user;
};

TEST_F(OneTimeBox, IsShownEachTimeUntilTheUserTurnsItOff) {
    user.onShown = [](CDialog &shown) {
        EXPECT_EQ(shown.title(), "Title");
        EXPECT_EQ(shown.control("turnOff")->caption(), "Don't show this again");
    };
    user.play("MessageBox", {"press no"});
    user.play("MessageBox", {"check turnOff", "press yes"});
    EXPECT_EQ(box("key"), IDNO);
    EXPECT_EQ(box("key"), IDYES);
    EXPECT_EQ(user.shown().size(), 2U);
    EXPECT_EQ(box("key"), IDYES) << "the answer that was given when it was turned off";
    EXPECT_EQ(user.shown().size(), 2U);
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

TEST_F(OneTimeBox, AUserWhoGoesAwayAfterCheckingTheBoxTurnsNothingOff) {
    user.play("MessageBox", {"check turnOff"});
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
    user.play("MessageBox", {"press yes"});
    EXPECT_EQ(box("key"), IDYES);
    EXPECT_EQ(user.shown().size(), 1U);
}

TEST_F(OneTimeBox, AnAnswerGivenInAdvanceCountsBeforeTheRememberedOne) {
    class AlwaysNo : public platform::DialogDriver {
        bool run(CDialog &dialog) override { return dialog.button("no")->press(); }
        bool answersInAdvance(const CDialog &dialog) const override { return dialog.button("no") != nullptr; }
    } no;
    orchard::hideMessage("key", IDYES);
    orchard::setDialogDriver(&no);
    EXPECT_EQ(box("key"), IDNO);
    orchard::setDialogDriver(&user);
    EXPECT_EQ(box("key"), IDYES);
    EXPECT_TRUE(user.shown().empty());
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
