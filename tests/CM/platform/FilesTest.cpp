#include "CM/platform/Files.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using platform::copyFile;
using platform::moveFile;
using support::contentsOf;

class Files : public testing::Test {
  protected:
    static mode_t modeOf(const std::string &path) {
        struct stat state {};
        return ::stat(path.c_str(), &state) == 0 ? state.st_mode & 07777U : 0U;
    }
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto &entry : fs::directory_iterator(directory_.path())) {
            found.push_back(entry.path().filename().string());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    support::TemporaryDirectory directory_;
};

TEST_F(Files, TellsFilesFromDirectoriesAndFromNothing) {
    const auto file = directory_.write("unit.osb", "x");
    EXPECT_TRUE(platform::fileExists({file}));
    EXPECT_TRUE(platform::isRegularFile({file}));
    EXPECT_FALSE(platform::isDirectory({file}));
    EXPECT_TRUE(platform::fileExists({directory_.path()}));
    EXPECT_TRUE(platform::isDirectory({directory_.path()}));
    EXPECT_FALSE(platform::isRegularFile({directory_.path()}));
    EXPECT_FALSE(platform::fileExists({directory_ / "none"}));
    EXPECT_FALSE(platform::canStat({directory_ / "none"}));
    EXPECT_FALSE(platform::fileExists(""));
}

TEST_F(Files, TakesEitherSeparator) {
    directory_.write("sub/unit.osb", "x");
    EXPECT_TRUE(platform::isRegularFile({directory_.path() + "\\sub\\unit.osb"}));
}

TEST_F(Files, ReadsARegularFileUpToTheLimit) {
    const std::string text("a\0b\r\n\xff", 6);
    const auto file = directory_.write("unit.osb", text);
    EXPECT_EQ(platform::readFile({file}, 100), text);
    EXPECT_EQ(platform::readFile({file}, 6), text);
    EXPECT_EQ(platform::readFile({file}, 2), text.substr(0, 2));
    EXPECT_EQ(platform::readFile({file}, 0), "");
    const std::string large(200'000, 'x');
    EXPECT_EQ(platform::readFile({directory_.write("large.osb", large)}, 1'000'000), large);
    EXPECT_EQ(platform::readFile({directory_.write("large.osb", large)}, 150'000)->size(), 150'000U);
    EXPECT_EQ(platform::readFile({directory_.write("empty.osb", "")}, 100), "");
}

TEST_F(Files, ReadsNothingButRegularFiles) {
    EXPECT_EQ(platform::readFile({directory_ / "none"}, 100), std::nullopt);
    EXPECT_EQ(platform::readFile({directory_.path()}, 100), std::nullopt);
    ASSERT_EQ(::mkfifo((directory_ / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(platform::readFile({directory_ / "pipe"}, 100), std::nullopt) << "and it waits for nobody";
    EXPECT_EQ(platform::readFile("", 100), std::nullopt);
}

TEST_F(Files, DoesNotTakeThePartBeforeANulForThePath) {
    const auto file = directory_.write("unit.osb", "x");
    EXPECT_FALSE(platform::deleteFile({file + std::string(1, '\0') + ".bak"}));
    EXPECT_TRUE(fs::exists(file));
}

TEST_F(Files, TakesTheOwnersWriteBitForThePermission) {
    const auto file = directory_.write("unit.osb", "x");
    ::chmod(file.c_str(), 0444);
    EXPECT_FALSE(platform::hasWritePermission({file})) << "also for a user whom the bits don't bind";
    ::chmod(file.c_str(), 0466);
    EXPECT_FALSE(platform::hasWritePermission({file}));
    ::chmod(file.c_str(), 0600);
    EXPECT_TRUE(platform::hasWritePermission({file}));
    EXPECT_FALSE(platform::hasWritePermission({directory_ / "none"}));
}

TEST_F(Files, MakesAFileWritableForItsOwnerAndChangesNoOtherBit) {
    const auto file = directory_.write("unit.osb", "x");
    ::chmod(file.c_str(), 0545);
    EXPECT_TRUE(platform::makeWritable({file}));
    EXPECT_EQ(modeOf(file), 0745U);
    EXPECT_FALSE(platform::makeWritable({directory_ / "none"}));
}

TEST_F(Files, CopiesContentsBitsAndTime) {
    const auto from = directory_.write("from", std::string(300'000, 'x') + std::string("\0end", 4));
    ::chmod(from.c_str(), 0444);
    fs::last_write_time(from, fs::last_write_time(from) - std::chrono::hours(24));
    const auto to = directory_ / "to";
    ASSERT_TRUE(copyFile({from}, {to}, true)) << platform::lastErrorText();
    EXPECT_EQ(contentsOf(to), contentsOf(from));
    EXPECT_EQ(modeOf(to), 0444U);
    EXPECT_EQ(fs::last_write_time(to), fs::last_write_time(from));
    EXPECT_EQ(names(), (std::vector<std::string>{"from", "to"})) << "nothing is left beside";
}

TEST_F(Files, CopiesOverAnExistingFileUnlessForbidden) {
    const auto from = directory_.write("from", "new");
    const auto to = directory_.write("to", "old");
    EXPECT_FALSE(copyFile({from}, {to}, true));
    EXPECT_EQ(errno, EEXIST);
    EXPECT_EQ(contentsOf(to), "old");
    ::chmod(to.c_str(), 0444);
    EXPECT_TRUE(copyFile({from}, {to}, false));
    EXPECT_EQ(contentsOf(to), "new");
    EXPECT_EQ(names(), (std::vector<std::string>{"from", "to"}));
}

TEST_F(Files, ReplacesTheTargetInOneStep) {
    const auto from = directory_.write("from", "new");
    const auto to = directory_.write("to", "old");
    std::ifstream reader(to); // a reader of the old file continues to read the old file
    EXPECT_TRUE(copyFile({from}, {to}, false));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "old");
}

TEST_F(Files, CopiesToTheFileBehindALink) {
    const auto from = directory_.write("from", "new");
    const auto to = directory_.write("real", "old");
    const auto link = directory_ / "link";
    fs::create_symlink(to, link);
    EXPECT_TRUE(copyFile({from}, {link}, false));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(contentsOf(to), "new");
}

TEST_F(Files, CopiesNoDirectoryNoMissingFileAndNoFileOntoItself) {
    const auto file = directory_.write("file", "x");
    fs::create_directory(directory_ / "sub");
    EXPECT_FALSE(copyFile({directory_ / "sub"}, {directory_ / "to"}, false));
    EXPECT_EQ(errno, EISDIR);
    EXPECT_FALSE(copyFile({file}, {directory_ / "sub"}, false));
    EXPECT_EQ(errno, EISDIR);
    EXPECT_FALSE(copyFile({directory_ / "none"}, {directory_ / "to"}, false));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(copyFile({file}, {file}, false));
    EXPECT_FALSE(copyFile({file}, {directory_ / "missing/to"}, false));
    EXPECT_EQ(names(), (std::vector<std::string>{"file", "sub"}));
    EXPECT_EQ(contentsOf(file), "x");
}

TEST_F(Files, MovesOverAnExistingFile) {
    const auto from = directory_.write("from", "new");
    const auto to = directory_.write("to", "old");
    ::chmod(to.c_str(), 0444);
    EXPECT_TRUE(moveFile({from}, {to}));
    EXPECT_EQ(contentsOf(to), "new");
    EXPECT_FALSE(fs::exists(from));
}

TEST_F(Files, MovesAcrossFileSystems) {
    const support::TemporaryDirectory other("/dev/shm");
    struct stat here {};
    struct stat there {};
    const std::string to = other / "to";
    const auto from = directory_.write("from", "text");
    ::stat(from.c_str(), &here);
    ::stat(other.path().c_str(), &there);
    EXPECT_TRUE(moveFile({from}, {to})) << platform::lastErrorText();
    EXPECT_EQ(contentsOf(to), "text");
    EXPECT_FALSE(fs::exists(from));
    EXPECT_NE(here.st_dev, there.st_dev) << "this machine can't show the difference";
}

TEST_F(Files, TellsWhyAMoveFailed) {
    EXPECT_FALSE(moveFile({directory_ / "none"}, {directory_ / "to"}));
    EXPECT_EQ(platform::lastErrorText(), "No such file or directory");
}

TEST_F(Files, DeletesReadOnlyFilesButNoDirectories) {
    const auto file = directory_.write("file", "x");
    ::chmod(file.c_str(), 0444);
    EXPECT_TRUE(platform::deleteFile({file}));
    EXPECT_FALSE(fs::exists(file));
    EXPECT_FALSE(platform::deleteFile({file}));
    EXPECT_FALSE(platform::deleteFile({directory_.path()}));
    EXPECT_TRUE(fs::exists(directory_.path()));
}

TEST_F(Files, EntersADirectoryAndTellsIt) {
    const CString before = platform::currentDirectory();
    std::string deep = fs::canonical(directory_.path()).string();
    for (int level = 0; level < 4; ++level) {
        deep += "/" + std::string(100, 'd');
    }
    fs::create_directories(deep);
    ASSERT_TRUE(platform::setCurrentDirectory({deep}));
    EXPECT_EQ(platform::currentDirectory(), deep);
    EXPECT_FALSE(platform::setCurrentDirectory({directory_ / "none"}));
    EXPECT_EQ(platform::currentDirectory(), deep) << "a failure changes nothing";
    ASSERT_TRUE(platform::setCurrentDirectory(before));
}

TEST_F(Files, EntersADirectoryWithABackslashInItsNameBeforeItTakesItForASeparator) {
    const CString before = platform::currentDirectory();
    const std::string root = fs::canonical(directory_.path()).string();
    fs::create_directories(root + "/a/b");
    ASSERT_TRUE(platform::setCurrentDirectory({root + "\\a\\b"}));
    EXPECT_EQ(platform::currentDirectory(), root + "/a/b");
    fs::create_directory(root + "/a\\b");
    ASSERT_TRUE(platform::setCurrentDirectory({root + "/a\\b"}));
    EXPECT_EQ(platform::currentDirectory(), root + "/a\\b");
    ASSERT_TRUE(platform::setCurrentDirectory(before));
}

TEST_F(Files, KnowsOneFileUnderTwoNames) {
    const auto file = directory_.write("unit.osb", "x");
    const auto copy = directory_.write("copy.osb", "x");
    const auto link = directory_ / "link.osb";
    fs::create_symlink(file, link);
    fs::create_directory_symlink(directory_.path(), directory_ / "here");
    EXPECT_TRUE(platform::sameFile({file}, {link}));
    EXPECT_TRUE(platform::sameFile({file}, {directory_ / "here/./unit.osb"}));
    EXPECT_TRUE(platform::sameFile({directory_.path()}, {directory_ / "here"}));
    EXPECT_FALSE(platform::sameFile({file}, {copy}));
    EXPECT_FALSE(platform::sameFile({directory_ / "none"}, {directory_ / "none"}));
}

TEST_F(Files, TellsNoCurrentDirectoryOnceItIsGone) {
    const CString before = platform::currentDirectory();
    const auto gone = directory_ / "gone";
    fs::create_directory(gone);
    ASSERT_TRUE(platform::setCurrentDirectory({gone}));
    fs::remove(gone);
    EXPECT_EQ(platform::currentDirectory(), "");
    ASSERT_TRUE(platform::setCurrentDirectory(before));
}

} // namespace
