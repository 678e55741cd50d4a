#include "orchard/settings/Settings.h"

#include "CM/host/Utilities.h"
#include "orchard/messages/DialogSetup.h"
#include "orchard/messages/ScriptedDialogDriver.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

using orchard::Settings;

std::string valueOf(const Settings &settings, const char *section, const char *key) {
    const std::string *const value = settings.find(section, key);
    return value == nullptr ? "(none)" : *value;
}

TEST(Settings, AreFoundBySectionAndKeyWithoutRegardToCase) {
    std::vector<std::string> problems;
    const auto settings =
        Settings::parse("[General]\nDEBUG_CM = 'TRUE'\n[Other]\nDEBUG_CM = 'x'\n", "s", problems);
    EXPECT_EQ(valueOf(settings, "General", "DEBUG_CM"), "TRUE");
    EXPECT_EQ(valueOf(settings, "GENERAL", "debug_cm"), "TRUE");
    EXPECT_EQ(valueOf(settings, "Other", "DEBUG_CM"), "x");
    EXPECT_EQ(valueOf(settings, "General", "FetchWithDesc"), "(none)");
    EXPECT_EQ(valueOf(settings, "Nowhere", "DEBUG_CM"), "(none)");
    EXPECT_TRUE(problems.empty());
}

TEST(Settings, TruthAndNumbersAreTexts) {
    std::vector<std::string> problems;
    const auto settings = Settings::parse("[General]\na = true\nb = false\nc = -12\nd = ''\n", "s", problems);
    EXPECT_EQ(valueOf(settings, "General", "a"), "TRUE");
    EXPECT_EQ(valueOf(settings, "General", "b"), "FALSE");
    EXPECT_EQ(valueOf(settings, "General", "c"), "-12");
    EXPECT_EQ(valueOf(settings, "General", "d"), "");
}

TEST(Settings, AValueThatCannotBeUsedIsToldWithItsPlaceAndTheRestCounts) {
    std::vector<std::string> problems;
    const auto settings = Settings::parse("lone = 1\n[General]\na = [1]\nb = 'ok'\n", "file.toml", problems);
    EXPECT_EQ(valueOf(settings, "General", "b"), "ok");
    ASSERT_EQ(problems.size(), 2U);
    const std::string all = problems[0] + "\n" + problems[1];
    EXPECT_NE(all.find("file.toml:3:5: the setting 'a' must be a text"), std::string::npos) << all;
    EXPECT_NE(all.find("file.toml:1:8: the setting 'lone' is outside a section"), std::string::npos) << all;
}

TEST(Settings, ABrokenFileGivesNoneAndIsToldWithLineAndColumn) {
    std::vector<std::string> problems;
    const auto settings = Settings::parse("[General]\na = 'x'\nDEBUG_CM=TRUE\n", "file.toml", problems);
    EXPECT_EQ(valueOf(settings, "General", "a"), "(none)");
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_TRUE(problems[0].starts_with("file.toml:3:")) << problems[0];
}

TEST(Settings, AMissingFileGivesNoneAndIsNoProblem) {
    std::vector<std::string> problems;
    const auto settings = Settings::read("/no/such/file", problems);
    EXPECT_EQ(valueOf(settings, "General", "a"), "(none)");
    EXPECT_TRUE(problems.empty());
}

TEST(Settings, AHugeFileIsRefused) {
    const support::TemporaryDirectory directory;
    const auto file = directory.write("settings.toml", "[General]\n" + std::string(3'000'000, '#') + "\n");
    std::vector<std::string> problems;
    Settings::read(file, problems);
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_NE(problems[0].find("larger than 1024 KiB"), std::string::npos);
}

TEST(Settings, ADirectoryInPlaceOfTheFileIsToldAndSurvived) {
    std::vector<std::string> problems;
    Settings::read("/tmp", problems);
    EXPECT_EQ(problems.size(), 1U);
}

TEST(StandardSettings, AreThoseOfTheEnvironmentVariableElseOfTheUser) {
    setenv("ORCHARD_SETTINGS", "/a/b.toml", 1);
    EXPECT_EQ(Settings::standardFile(), "/a/b.toml");
    unsetenv("ORCHARD_SETTINGS");
    setenv("XDG_CONFIG_HOME", "/c", 1);
    EXPECT_EQ(Settings::standardFile(), "/c/orchard/settings.toml");
    unsetenv("XDG_CONFIG_HOME");
    setenv("HOME", "/h", 1);
    EXPECT_EQ(Settings::standardFile(), "/h/.config/orchard/settings.toml");
}

TEST(EnvironmentVariables, AnswerFromTheSettingsInForce) {
    setenv("ORCHARD_SETTINGS", "/no/such/file", 1);
    CString value = "as it was";
    CString second = "as it was";
    orchard::ScriptedDialogDriver user;
    orchard::setDialogDriver(&user);
    EXPECT_EQ(oqGetEnvVar("General", "DEBUG_CM", value, nullptr), 0);
    EXPECT_EQ(value, "as it was");
    ASSERT_EQ(user.notices().size(), 1U) << "the file that is named and missing";
    EXPECT_NE(user.notices()[0].text.Find("/no/such/file: there is no such file"), -1) << user.notices()[0].text;
    orchard::setDialogDriver(nullptr);
    orchard::overrideSetting("General", "DEBUG_CM", "TRUE");
    EXPECT_EQ(oqGetEnvVar("General", "DEBUG_CM", value, &second), 1);
    EXPECT_EQ(value, "TRUE");
    EXPECT_EQ(second, "");
}

} // namespace
