#include "orchard/properties/InstalledSets.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

using orchard::InstalledSets;
namespace fs = std::filesystem;

class TwoDirectories : public testing::Test {
  protected:
    TwoDirectories() {
        fs::create_directories(user);
        fs::create_directories(installed);
    }

    static void write(const fs::path &file, const std::string &text) {
        std::ofstream(file, std::ios::binary) << text;
    }
    [[nodiscard]] std::vector<fs::path> directories() const { return {user, installed}; }
    static std::string valueIn(const InstalledSets &sets, const char *metaclass, const char *key) {
        const IProperty *const property = sets.find("ConfigurationManagement", metaclass, key);
        return property == nullptr ? "(none)" : property->getValue().str();
    }

    const support::TemporaryDirectory directory;
    const fs::path root = directory.path();
    const fs::path user = root / "user";
    const fs::path installed = root / "installed";
};

TEST_F(TwoDirectories, EverySetOfBothIsThere) {
    write(user / "mine.toml", "[ConfigurationManagement.Mine]\na = '1'\n");
    write(installed / "rcs.toml", "tool = 'RCS'\n[ConfigurationManagement.RCS]\na = '2'\n");
    write(installed / "notes.txt", "no set");
    const InstalledSets sets(directories());
    EXPECT_EQ(sets.count(), 2U);
    EXPECT_EQ(valueIn(sets, "mine", "A"), "1");
    EXPECT_EQ(valueIn(sets, "RCS", "a"), "2");
    EXPECT_EQ(valueIn(sets, "RCS", "b"), "(none)");
    EXPECT_TRUE(sets.problems().empty());
}

TEST_F(TwoDirectories, TheUsersPropertyCountsBeforeTheInstalledOne) {
    write(user / "rcs.toml", "[ConfigurationManagement.RCS]\na = 'user'\n");
    write(installed / "rcs.toml", "[ConfigurationManagement.RCS]\na = 'installed'\nb = 'installed'\n");
    const InstalledSets sets(directories());
    EXPECT_EQ(valueIn(sets, "RCS", "a"), "user");
    EXPECT_EQ(valueIn(sets, "RCS", "b"), "installed");
}

TEST_F(TwoDirectories, WithinADirectoryTheFirstFileByNameCounts) {
    write(installed / "b.toml", "[ConfigurationManagement.RCS]\na = 'b'\n");
    write(installed / "a.toml", "[ConfigurationManagement.RCS]\na = 'a'\n");
    EXPECT_EQ(valueIn(InstalledSets(directories()), "RCS", "a"), "a");
}

TEST_F(TwoDirectories, ABrokenSetIsLeftOutWhollyAndTold) {
    write(installed / "broken.toml", "[ConfigurationManagement.Broken]\na = '1'\nb = [\n");
    write(installed / "rcs.toml", "[ConfigurationManagement.RCS]\na = '2'\n");
    const InstalledSets sets(directories());
    EXPECT_EQ(sets.count(), 1U);
    EXPECT_EQ(valueIn(sets, "Broken", "a"), "(none)");
    EXPECT_EQ(valueIn(sets, "RCS", "a"), "2");
    ASSERT_EQ(sets.problems().size(), 1U);
    EXPECT_TRUE(sets.problems()[0].starts_with((installed / "broken.toml").string() + ":")) << sets.problems()[0];
}

TEST_F(TwoDirectories, ADirectoryNamedLikeASetIsToldAndSurvived) {
    fs::create_directory(installed / "odd.toml");
    EXPECT_EQ(InstalledSets(directories()).problems().size(), 1U);
}

TEST_F(TwoDirectories, MissingDirectoriesHoldNoSets) {
    const InstalledSets sets({root / "nowhere", {}});
    EXPECT_EQ(sets.count(), 0U);
    EXPECT_TRUE(sets.problems().empty());
    EXPECT_EQ(valueIn(sets, "RCS", "a"), "(none)");
}

TEST_F(TwoDirectories, AChangedValueIsFoundByTheNextLookUp) {
    write(installed / "rcs.toml", "[ConfigurationManagement.RCS]\na = '1'\n");
    const InstalledSets sets(directories());
    IProperty *const property = sets.find("ConfigurationManagement", "RCS", "a");
    ASSERT_NE(property, nullptr);
    property->setValue("2");
    EXPECT_EQ(sets.find("ConfigurationManagement", "rcs", "A"), property);
    EXPECT_EQ(valueIn(sets, "RCS", "a"), "2");
}

TEST_F(TwoDirectories, APropertyThatGetsAnotherNameIsStillFoundByItsOwn) {
    write(installed / "rcs.toml", "[ConfigurationManagement.RCS]\na_rather_long_name_of_a_property = '1'\n");
    const InstalledSets sets(directories());
    IProperty *const property = sets.find("ConfigurationManagement", "RCS", "a_rather_long_name_of_a_property");
    ASSERT_NE(property, nullptr);
    property->setName("another and even longer name for the very same property");
    EXPECT_EQ(sets.find("ConfigurationManagement", "RCS", "a_rather_long_name_of_a_property"), property);
}

TEST_F(TwoDirectories, TheStandardOnesAreTheUsersAndTheInstalled) {
    setenv("XDG_CONFIG_HOME", user.c_str(), 1);
    setenv("ORCHARD_SHARE", installed.c_str(), 1);
    EXPECT_EQ(InstalledSets::standardDirectories(),
              (std::vector<fs::path>{user / "orchard" / "toolsets", installed / "toolsets"}));
    unsetenv("XDG_CONFIG_HOME");
    unsetenv("ORCHARD_SHARE");
}

} // namespace
