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

TEST(Paths, AreCutApart) {
    EXPECT_EQ(fileOfPath("a\\b/c.d"), "c.d");
    EXPECT_EQ(directoryOfPath("a/b\\c.d"), "a/b");
    EXPECT_EQ(directoryOfPath("c.d"), "");
    EXPECT_EQ(extensionOf("a.b/c"), "");
    EXPECT_EQ(extensionOf("a/c.x.y"), ".y");
    EXPECT_EQ(extensionOf(".hidden"), "");
    EXPECT_TRUE(liesIn("/a/b", "/a"));
    EXPECT_FALSE(liesIn("/ab", "/a"));
    EXPECT_FALSE(liesIn("/a", "/a"));
}

TEST(Paths, EveryPartHasToStandInACommandLine) {
    EXPECT_EQ(faultOfPath("/a/../b c\\d.ocl"), "");
    EXPECT_EQ(faultOfPath("C:\\a\\.\\b//c/"), "");
    EXPECT_NE(faultOfPath("/a$(id)/b.ocl"), "");
    EXPECT_NE(faultOfPath("/a/`id`/b.ocl"), "");
    EXPECT_NE(faultOfPath("/a\"/../b.ocl"), "") << "the text as it stands is what is passed on";
    EXPECT_NE(faultOfPath("../a\nb/c"), "");
}

TEST(Paths, AConditionalOfTemplatesMustNotStandInOneAlsoNotSpreadOverItsParts) {
    EXPECT_NE(faultOfPath("/a(b?c)/d.ocl"), "");
    EXPECT_NE(faultOfPath("/a(b/c?/d).ocl"), "");
    EXPECT_EQ(faultOfPath("/a(b)/c?.ocl"), "");
    EXPECT_EQ(faultOfPath("/a)b?c(.ocl"), "");
    EXPECT_EQ(faultOfPath("/why?/a(b).ocl"), "");
}
