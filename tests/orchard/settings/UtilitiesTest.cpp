#include "CM/host/Utilities.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <sys/stat.h>

namespace {

struct PathRow {
    const char *path;
    const char *directory;
    const char *file;
    const char *extension;
    friend std::ostream &operator<<(std::ostream &stream, const PathRow &row) { return stream << row.path; }
};

class ParsePath : public testing::TestWithParam<PathRow> {};

TEST_P(ParsePath, SplitsAtTheLastSeparatorAndTheLastDot) {
    CString directory;
    CString file;
    CString extension;
    ParseToDirFileNameAndExtension(GetParam().path, directory, file, extension);
    EXPECT_EQ(directory, GetParam().directory);
    EXPECT_EQ(file, GetParam().file);
    EXPECT_EQ(extension, GetParam().extension);
}

INSTANTIATE_TEST_SUITE_P(Rows, ParsePath,
                         testing::Values(PathRow{"/a/b/c.ocl", "/a/b", "c", ".ocl"},
                                         PathRow{"C:\\a\\b.osb", "C:\\a", "b", ".osb"},
                                         PathRow{"/a\\b/c", "/a\\b", "c", ""}, PathRow{"c.d.e", "", "c.d", ".e"},
                                         PathRow{"/a.b/c", "/a.b", "c", ""}, PathRow{"/c.ocl", "", "c", ".ocl"},
                                         PathRow{"", "", "", ""}, PathRow{"/a/", "/a", "", ""}));

TEST(ParsePathInPlace, TheDirectoryMayBeThePathItself) {
    CString path = "/a/b.c";
    CString file;
    CString extension;
    ParseToDirFileNameAndExtension(path, path, file, extension);
    EXPECT_EQ(path, "/a");
    EXPECT_EQ(file, "b");
    EXPECT_EQ(extension, ".c");
}

TEST(AbsolutePath, BeginsAtARoot) {
    EXPECT_TRUE(oqIsAbsolutePath("/a"));
    EXPECT_TRUE(oqIsAbsolutePath("\\a"));
    EXPECT_TRUE(oqIsAbsolutePath("C:\\a"));
    EXPECT_TRUE(oqIsAbsolutePath("c:/a"));
    EXPECT_FALSE(oqIsAbsolutePath("C:a"));
    EXPECT_FALSE(oqIsAbsolutePath("a/b"));
    EXPECT_FALSE(oqIsAbsolutePath(""));
}

class UtilitiesOnFiles : public testing::Test {
  protected:
    CString make(const char *name, const char *text) { return directory.write(name, text); }
    CString path(const char *name) { return directory / name; }
    const support::TemporaryDirectory directory;
};

TEST_F(UtilitiesOnFiles, TellWhetherAFileHoldsAnything) {
    EXPECT_TRUE(oqFileExistsAndNonEmpty(make("full", "x")));
    EXPECT_FALSE(oqFileExistsAndNonEmpty(make("empty", "")));
    EXPECT_FALSE(oqFileExistsAndNonEmpty(path("missing")));
    EXPECT_TRUE(oqFileExist(path("empty")));
    EXPECT_FALSE(oqFileExist(path("missing")));
}

TEST_F(UtilitiesOnFiles, TakeThePermissionFromTheBitsAlsoForAMightyUser) {
    const CString file = make("a", "x");
    EXPECT_TRUE(oqFileHasWritePermission(file));
    chmod(file.c_str(), 0444);
    EXPECT_FALSE(oqFileHasWritePermission(file));
    EXPECT_FALSE(oqFileHasWritePermission(path("missing")));
}

TEST_F(UtilitiesOnFiles, TellTheTimeOfTheLastChange) {
    const CString file = make("a", "x");
    EXPECT_NEAR(static_cast<double>(oqGetFileLastModifiedTime(file)), static_cast<double>(time(nullptr)), 60);
    EXPECT_EQ(oqGetFileLastModifiedTime(path("missing")), -1);
}

TEST_F(UtilitiesOnFiles, DeleteAFile) {
    const CString file = make("a", "x");
    EXPECT_EQ(oqDeleteFile(file, 1), 1);
    EXPECT_FALSE(oqFileExist(file));
    EXPECT_EQ(oqDeleteFile(file, 1), 0);
}

TEST_F(UtilitiesOnFiles, MoveReplacesATargetOnlyWhenTold) {
    const CString from = make("from", "new");
    const CString to = make("to", "old");
    EXPECT_EQ(oqMoveFileEx(from, to, 2), 0);
    EXPECT_TRUE(oqFileExist(from));
    EXPECT_EQ(oqMoveFileEx(from, to, 3), 1);
    EXPECT_FALSE(oqFileExist(from));
    EXPECT_EQ(oqMoveFileEx(to, path("other"), 0), 1);
    EXPECT_TRUE(oqFileExist(path("other")));
}

TEST_F(UtilitiesOnFiles, TheEmptyDirectoryIsTheCurrentOne) {
    CString error;
    EXPECT_EQ(oqGetFullPathOfDirectory("", error), std::filesystem::current_path().string());
    EXPECT_TRUE(error.IsEmpty());
}

TEST_F(UtilitiesOnFiles, AFullPathHasNoDetours) {
    CString error;
    std::filesystem::create_directory(directory / "sub");
    EXPECT_EQ(oqGetFullPathOfDirectory(path("sub/../sub/."), error),
              std::filesystem::canonical(directory / "sub").string());
}

TEST_F(UtilitiesOnFiles, ADirectoryThatIsNoneHasNoFullPathAndAReason) {
    CString error;
    EXPECT_EQ(oqGetFullPathOfDirectory(path("missing"), error), "");
    EXPECT_NE(error.Find("No such file or directory"), -1);
    EXPECT_EQ(oqGetFullPathOfDirectory(make("file", "x"), error), "");
    EXPECT_NE(error.Find("Not a directory"), -1);
}

TEST(Texts, OfTimeDateUserAndPlaces) {
    EXPECT_THAT(oqGetCurrentTime().str(), testing::MatchesRegex("[0-9]{2}:[0-9]{2}:[0-9]{2}"));
    EXPECT_THAT(oqGetCurrentDate().str(), testing::MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2}"));
    EXPECT_FALSE(oqGetCurrentUser().IsEmpty());
    EXPECT_EQ(oqPathSeparator(), '/');
    unsetenv("TMPDIR");
    EXPECT_EQ(oqGetTempDir(), "/tmp");
    setenv("TMPDIR", "/var/tmp", 1);
    EXPECT_EQ(oqGetTempDir(), "/var/tmp");
    unsetenv("TMPDIR");
}

} // namespace
