#include "orchard/settings/Places.h"

#include "CM/host/Utilities.h"
#include "orchard/messages/ScriptedUser.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

TEST(ShareDirectory, IsTheOneThatTheEnvironmentNames) {
    setenv("ORCHARD_SHARE", "/somewhere/else", 1);
    EXPECT_EQ(orchard::shareDirectory(), "/somewhere/else");
    CString root;
    CString error;
    EXPECT_EQ(oqGetRoot(root, error), 1);
    EXPECT_EQ(root, "/somewhere/else");
    unsetenv("ORCHARD_SHARE");
}

TEST(ShareDirectory, ANameOfNothingIsToldOnce) {
    orchard::ScriptedUser user;
    orchard::setUserInterface(&user);
    setenv("ORCHARD_SHARE", "/no/such/share", 1);
    EXPECT_EQ(orchard::shareDirectory(), "/no/such/share");
    EXPECT_EQ(orchard::shareDirectory(), "/no/such/share");
    ASSERT_EQ(user.messages().size(), 1U);
    EXPECT_NE(user.messages()[0].text.Find("/no/such/share"), -1);
    unsetenv("ORCHARD_SHARE");
    orchard::setUserInterface(nullptr);
}

TEST(ShareDirectory, ARelativeNameStaysWhereItWasAtFirst) {
    namespace fs = std::filesystem;
    const fs::path before = fs::current_path();
    std::string name = fs::temp_directory_path() / "orchard-places-XXXXXX";
    const fs::path root = fs::canonical(mkdtemp(name.data()));
    fs::create_directory(root / "mine");
    fs::current_path(root);
    setenv("ORCHARD_SHARE", "mine", 1);
    EXPECT_EQ(orchard::shareDirectory(), root / "mine");
    fs::current_path("/");
    EXPECT_EQ(orchard::shareDirectory(), root / "mine");
    unsetenv("ORCHARD_SHARE");
    fs::current_path(before);
    fs::remove_all(root);
}

TEST(ShareDirectory, IsFoundInTheBuildTree) {
    unsetenv("ORCHARD_SHARE");
    EXPECT_TRUE(std::filesystem::is_regular_file(orchard::shareDirectory() / "toolsets" / "rcs.toml"));
}

TEST(UserDirectory, ARelativeConfigurationHomeDoesNotCount) {
    setenv("XDG_CONFIG_HOME", "relative", 1);
    setenv("HOME", "/home/u", 1);
    EXPECT_EQ(orchard::userDirectory(), "/home/u/.config/orchard");
    unsetenv("XDG_CONFIG_HOME");
}

TEST(CacheDirectory, IsApartFromTheUsersFiles) {
    setenv("HOME", "/home/u", 1);
    EXPECT_EQ(orchard::cacheDirectory(), "/home/u/.cache/orchard");
    setenv("XDG_CACHE_HOME", "/var/tmp/u", 1);
    EXPECT_EQ(orchard::cacheDirectory(), "/var/tmp/u/orchard");
    unsetenv("XDG_CACHE_HOME");
}

} // namespace
