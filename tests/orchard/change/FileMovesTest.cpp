#include "tests/orchard/storage/Workbench.h"

#include "orchard/change/ChangeSteps.h"
#include "tests/support/TemporaryDirectory.h"

#include <cerrno>
#include <sys/stat.h>

namespace {

class FileMoves : public Workbench {
  protected:
    [[nodiscard]] bool isOnAnotherFileSystem() const {
        struct stat here {};
        struct stat there {};
        return ::stat(directory.c_str(), &here) == 0 && ::stat(other.path().c_str(), &there) == 0 &&
               here.st_dev != there.st_dev;
    }
    const support::TemporaryDirectory other{"/dev/shm"};
};

TEST_F(FileMoves, AFileIsNeverWrittenOver) {
    write(path("a"), "a");
    write(path("b"), "b");
    EXPECT_EQ(orchard::moveWithoutReplacing(path("a"), path("b")), EEXIST);
    EXPECT_EQ(orchard::moveWithoutReplacing(path("c"), path("d")), ENOENT);
    EXPECT_EQ(read(path("a")), "a");
    EXPECT_EQ(read(path("b")), "b");
}

TEST_F(FileMoves, AFileGoesToAnotherFileSystemToo) {
    if (!isOnAnotherFileSystem()) {
        GTEST_SKIP() << "there is one file system only";
    }
    write(path("a"), "a");
    EXPECT_EQ(orchard::moveWithoutReplacing(path("a"), other / "a"), 0);
    EXPECT_FALSE(std::filesystem::exists(path("a")));
    EXPECT_EQ(read(other / "a"), "a");
    write(path("a"), "another");
    EXPECT_NE(orchard::moveWithoutReplacing(path("a"), other / "a"), 0);
    EXPECT_EQ(read(path("a")), "another");
    EXPECT_EQ(read(other / "a"), "a");
    std::filesystem::create_directory(path("b"));
    EXPECT_EQ(orchard::moveWithoutReplacing(path("b"), other / "b"), EXDEV) << "a directory is not copied";
}

} // namespace
