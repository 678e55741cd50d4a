#include "CM/platform/PathText.h"

#include <gtest/gtest.h>

namespace {

TEST(PathText, AnAbsolutePathBeginsWithASeparatorOrWithADriveAndASeparator) {
    for (const char *const path : {"/", "/a", "\\a", "\\\\server\\a", "C:\\a", "c:/a", "z:/"}) {
        EXPECT_TRUE(platform::isAbsolutePath(path)) << path;
    }
    for (const char *const path : {"", "a", "a/b", "C:", "C:a", "1:/a", "::/a", ":/a", "ab:/c"}) {
        EXPECT_FALSE(platform::isAbsolutePath(path)) << path;
    }
}

TEST(PathText, IsCutAtTheLastSeparatorOfEitherKind) {
    EXPECT_EQ(platform::fileOfPath("a\\b/c.d"), "c.d");
    EXPECT_EQ(platform::fileOfPath("a/b\\c.d"), "c.d");
    EXPECT_EQ(platform::directoryOfPath("a/b\\c.d"), "a/b");
    EXPECT_EQ(platform::fileOfPath("a/"), "");
    EXPECT_EQ(platform::directoryOfPath("/a"), "");
}

TEST(PathText, WithoutASeparatorIsAllFile) {
    EXPECT_EQ(platform::fileOfPath("c.d"), "c.d");
    EXPECT_EQ(platform::directoryOfPath("c.d"), "");
    EXPECT_FALSE(platform::hasSeparator("c.d"));
    EXPECT_TRUE(platform::hasSeparator("a\\b"));
}

} // namespace
