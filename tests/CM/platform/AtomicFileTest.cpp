#include "CM/platform/AtomicFile.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <iterator>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

using support::contentsOf;

class AtomicFile : public testing::Test {
  protected:
    [[nodiscard]] std::string path(std::string_view name) const { return directory / name; }
    [[nodiscard]] auto filesInDirectory() const {
        return std::distance(std::filesystem::directory_iterator(directory.path()),
                             std::filesystem::directory_iterator());
    }

    support::TemporaryDirectory directory;
};

/// Limits the size of the files of this process while it exists.
class SizeLimit {
  public:
    explicit SizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }

  private:
    rlimit before_{};
};

TEST_F(AtomicFile, LeavesTheOldFileWhenThereIsNoRoomForTheNewOne) {
    directory.write("unit", "old");
    std::string error;
    {
        const SizeLimit limit(1000);
        error = platform::writeWholeFile(path("unit"), std::string(100000, 'x'));
    }
    EXPECT_THAT(error, testing::HasSubstr("File too large"));
    EXPECT_EQ(contentsOf(path("unit")), "old");
    EXPECT_EQ(filesInDirectory(), 1) << "the draft has to go";
}

TEST_F(AtomicFile, KeepsThePermissionBits) {
    directory.write("unit", "old");
    ::chmod(path("unit").c_str(), 0640);
    EXPECT_EQ(platform::writeWholeFile(path("unit"), "new"), "");
    struct stat state {};
    ::stat(path("unit").c_str(), &state);
    EXPECT_EQ(state.st_mode & 0777U, 0640U);
    EXPECT_EQ(contentsOf(path("unit")), "new");
}

TEST_F(AtomicFile, WritesToWhatALinkPointsAt) {
    directory.write("real", "old");
    std::filesystem::create_symlink(path("real"), path("link"));
    EXPECT_EQ(platform::writeWholeFile(path("link"), "new"), "");
    EXPECT_TRUE(std::filesystem::is_symlink(path("link")));
    EXPECT_EQ(contentsOf(path("real")), "new");
}

TEST_F(AtomicFile, SaysWhyADirectoryCanNotTakeAFile) {
    EXPECT_THAT(platform::writeWholeFile(path("none/unit"), "new"),
                testing::HasSubstr("No such file or directory"));
}

TEST_F(AtomicFile, TakesTheLongestNames) {
    const std::string name(255, 'n');
    EXPECT_EQ(platform::writeWholeFile(path(name), "new"), "");
    EXPECT_EQ(contentsOf(path(name)), "new");
}

TEST_F(AtomicFile, ANewFileThatCanNotBeWrittenIsRemoved) {
    std::string error;
    {
        const SizeLimit limit(1000);
        error = platform::writeNewFile(path("unit"), std::string(100000, 'x'));
    }
    EXPECT_THAT(error, testing::HasSubstr("File too large"));
    EXPECT_EQ(filesInDirectory(), 0);
}

TEST_F(AtomicFile, ANewFileIsNeverWrittenOverAnother) {
    directory.write("unit", "old");
    EXPECT_THAT(platform::writeNewFile(path("unit"), "new"), testing::HasSubstr("File exists"));
    EXPECT_EQ(contentsOf(path("unit")), "old");
}

} // namespace
