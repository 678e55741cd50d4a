#include "CM/platform/LockFile.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Kind = platform::LockFile::Kind;
using Taken = platform::LockFile::Taken;

class LockFile : public testing::Test {
  protected:
    [[nodiscard]] std::string path() const { return directory / "lock"; }

    support::TemporaryDirectory directory;
    platform::LockFile mine{path()};
    platform::LockFile other{path()};
};

TEST_F(LockFile, ExcludesAnotherHolderUntilItIsUnlocked) {
    ASSERT_EQ(mine.tryLock({0, 1}, Kind::exclusive), Taken::yes);
    EXPECT_EQ(other.tryLock({0, 1}, Kind::exclusive), Taken::busy);
    EXPECT_EQ(other.tryLock({0, 1}, Kind::shared), Taken::busy);
    mine.unlock({0, 1});
    EXPECT_EQ(other.tryLock({0, 1}, Kind::exclusive), Taken::yes);
}

TEST_F(LockFile, SharesARangeButNotWithOneWhoWantsItAlone) {
    ASSERT_EQ(mine.tryLock({0, 1}, Kind::shared), Taken::yes);
    EXPECT_EQ(other.tryLock({0, 1}, Kind::exclusive), Taken::busy);
    EXPECT_EQ(other.tryLock({0, 1}, Kind::shared), Taken::yes);
}

TEST_F(LockFile, LocksRangesApart) {
    ASSERT_EQ(mine.tryLock({7, 1}, Kind::exclusive), Taken::yes);
    EXPECT_EQ(other.tryLock({8, 1}, Kind::exclusive), Taken::yes);
    EXPECT_EQ(other.tryLock({0, 0}, Kind::exclusive), Taken::busy);
}

TEST_F(LockFile, ShowsWhetherAnotherOneHoldsARange) {
    EXPECT_FALSE(other.isHeldByOther({0, 0}));
    ASSERT_EQ(mine.tryLock({5, 1}, Kind::shared), Taken::yes);
    EXPECT_TRUE(other.isHeldByOther({0, 0}));
    EXPECT_FALSE(other.isHeldByOther({6, 0}));
    EXPECT_FALSE(mine.isHeldByOther({0, 0}));
}

TEST_F(LockFile, StaysLockedWhenThisProcessOpensAndClosesTheFile) {
    ASSERT_EQ(mine.tryLock({0, 1}, Kind::exclusive), Taken::yes);
    static_cast<void>(support::contentsOf(path()));
    { platform::LockFile passing{path()}; }
    EXPECT_EQ(other.tryLock({0, 1}, Kind::exclusive), Taken::busy);
}

TEST_F(LockFile, EndsWithAProcessThatIsKilled) {
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        platform::LockFile held{path()};
        const char answer = held.tryLock({0, 1}, Kind::exclusive) == Taken::yes ? 'y' : 'n';
        static_cast<void>(!write(ready[1], &answer, 1));
        pause();
        _exit(0);
    }
    char answer = 0;
    ASSERT_EQ(read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, 'y');
    EXPECT_EQ(other.tryLock({0, 1}, Kind::exclusive), Taken::busy);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_EQ(other.tryLock({0, 1}, Kind::exclusive), Taken::yes);
    close(ready[0]);
    close(ready[1]);
}

TEST_F(LockFile, IsNotKeptByAChildThatOutlivesIt) {
    auto held = std::make_unique<platform::LockFile>(path());
    ASSERT_EQ(held->tryLock({0, 1}, Kind::exclusive), Taken::yes);
    const pid_t child = fork();
    if (child == 0) {
        execlp("sleep", "sleep", "60", nullptr);
        _exit(1);
    }
    held.reset();
    // The child may not have begun its program yet.
    for (int tries = 0; tries < 500 && other.tryLock({0, 1}, Kind::exclusive) == Taken::busy; ++tries) {
        usleep(10000);
    }
    EXPECT_EQ(other.tryLock({0, 1}, Kind::exclusive), Taken::yes);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
}

TEST_F(LockFile, IsMadeByTheFirstLockAndNotByReading) {
    EXPECT_EQ(mine.read(0, 10), "");
    EXPECT_FALSE(mine.isHeldByOther({0, 0}));
    EXPECT_FALSE(std::filesystem::exists(path()));
    ASSERT_EQ(mine.tryLock({0, 1}, Kind::shared), Taken::yes);
    EXPECT_TRUE(std::filesystem::exists(path()));
    EXPECT_EQ(mine.fault(), "");
}

TEST_F(LockFile, IsWritableForAllWhoMayWriteToItsDirectory) {
    std::filesystem::permissions(directory.path(), std::filesystem::perms(0775));
    const mode_t before = umask(077);
    ASSERT_EQ(mine.tryLock({0, 1}, Kind::exclusive), Taken::yes);
    umask(before);
    struct stat facts = {};
    ASSERT_EQ(stat(path().c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777U, 0664U);
}

TEST_F(LockFile, NamesWhyItCantBeLocked) {
    platform::LockFile nowhere{directory / "missing/lock"};
    EXPECT_EQ(nowhere.tryLock({0, 1}, Kind::exclusive), Taken::failed);
    EXPECT_EQ(nowhere.fault(), "No such file or directory");
    directory.write("target", "text");
    std::filesystem::create_symlink("target", path());
    EXPECT_EQ(mine.tryLock({0, 1}, Kind::exclusive), Taken::failed);
}

TEST_F(LockFile, KeepsTextForTheOthers) {
    ASSERT_EQ(mine.tryLock({0, 1}, Kind::exclusive), Taken::yes);
    EXPECT_TRUE(mine.write(3, "abc"));
    EXPECT_EQ(other.read(3, 2), "ab");
    EXPECT_EQ(other.read(3, 10), "abc");
    EXPECT_EQ(other.read(6, 10), "");
}

} // namespace
