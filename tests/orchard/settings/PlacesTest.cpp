#include "orchard/settings/Places.h"

#include "CM/host/Utilities.h"

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

} // namespace
