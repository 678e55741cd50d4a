#include "orchard/model/Paths.h"

#include <gtest/gtest.h>

using namespace orchard;

TEST(Paths, AreMadeNormalWithEitherSeparator) {
    EXPECT_EQ(normalPath("a\\b/./c", "/base"), "/base/a/b/c");
    EXPECT_EQ(normalPath("../x", "/base/deep"), "/base/x");
    EXPECT_EQ(normalPath("/a//b/", "/base"), "/a/b");
    EXPECT_EQ(normalPath("..", "/"), "/");
    EXPECT_EQ(normalPath("C:\\a\\b", "/base"), "C:/a/b");
}

TEST(Paths, AreMadeRelativeAndBack) {
    EXPECT_EQ(relativePath("/a/b/c", "/a"), "b/c");
    EXPECT_EQ(relativePath("/a/x/c", "/a/b"), "../x/c");
    EXPECT_EQ(relativePath("/ab/c", "/a"), "../ab/c");
}

TEST(Paths, HaveAnExtensionAndLieInDirectories) {
    EXPECT_EQ(extensionOf("a.b/c"), "");
    EXPECT_EQ(extensionOf("a/c.x.y"), ".y");
    EXPECT_EQ(extensionOf(".hidden"), "");
    EXPECT_TRUE(liesIn("/a/b", "/a"));
    EXPECT_FALSE(liesIn("/ab", "/a"));
    EXPECT_FALSE(liesIn("/a", "/a"));
}

TEST(Paths, AFileNameIsOneQuotableNameOfAtMost255Bytes) {
    EXPECT_EQ(faultOfFileName("b c.ocl"), "");
    EXPECT_EQ(faultOfFileName(std::string(255, 'x')), "");
    for (const std::string &name :
         {std::string(), std::string("."), std::string(".."), std::string(256, 'x'), std::string("a/b"),
          std::string("a\\b"), std::string("a\"b"), std::string("a\nb"), std::string("(a?b)")}) {
        EXPECT_NE(faultOfFileName(name), "") << name;
    }
}

TEST(Paths, APathHasToBeQuotableInACommandLine) {
    EXPECT_EQ(faultOfPath("/a/../b c\\d.ocl"), "");
    EXPECT_EQ(faultOfPath("C:\\a\\.\\b//c/"), "");
    EXPECT_EQ(faultOfPath("/a$(id)/b.ocl"), "it contains the character $, which a command line can't quote");
    EXPECT_NE(faultOfPath("/a\"/../b.ocl"), "") << "the text as it stands is what is passed on";
    EXPECT_EQ(faultOfPath("../a\nb/c"), "it contains the control character 0x0A");
    EXPECT_NE(faultOfPath("C:\\a\\"), "");
    EXPECT_NE(faultOfPath("/a(b/c?/d).ocl"), "") << "a conditional of templates";
    EXPECT_NE(faultOfPath("/a/" + std::string(256, 'x') + "/b"), "");
}
