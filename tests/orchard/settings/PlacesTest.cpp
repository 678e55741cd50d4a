#include "orchard/settings/Places.h"

#include "CM/host/Utilities.h"
#include "orchard/messages/DialogSetup.h"
#include "orchard/messages/ScriptedDialogDriver.h"
#include "tests/support/TemporaryDirectory.h"

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
    orchard::ScriptedDialogDriver user;
    orchard::setDialogDriver(&user);
    setenv("ORCHARD_SHARE", "/no/such/share", 1);
    EXPECT_EQ(orchard::shareDirectory(), "/no/such/share");
    EXPECT_EQ(orchard::shareDirectory(), "/no/such/share");
    ASSERT_EQ(user.notices().size(), 1U);
    EXPECT_NE(user.notices()[0].text.Find("/no/such/share"), -1);
    unsetenv("ORCHARD_SHARE");
    orchard::setDialogDriver(nullptr);
}

TEST(ShareDirectory, ARelativeNameStaysWhereItWasAtFirst) {
    namespace fs = std::filesystem;
    const fs::path before = fs::current_path();
    const support::TemporaryDirectory directory;
    const fs::path root = directory.path();
    fs::create_directory(root / "mine");
    fs::current_path(root);
    setenv("ORCHARD_SHARE", "mine", 1);
    EXPECT_EQ(orchard::shareDirectory(), root / "mine");
    fs::current_path("/");
    EXPECT_EQ(orchard::shareDirectory(), root / "mine");
    unsetenv("ORCHARD_SHARE");
    fs::current_path(before);
}

TEST(ShareDirectory, IsFoundInTheBuildTree) {
    unsetenv("ORCHARD_SHARE");
    EXPECT_TRUE(std::filesystem::is_regular_file(orchard::shareDirectory() / "toolsets" / "rcs.toml"));
}

} // namespace
