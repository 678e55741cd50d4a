#include "orchard/storage/AtomicFile.h"

#include "tests/orchard/storage/Workbench.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

class AtomicFile : public Workbench {
  protected:
    [[nodiscard]] std::size_t filesInDirectory() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(directory), std::filesystem::directory_iterator()));
    }
};

/// Files of this process can't grow past a size while one lives.
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
    write(path("unit"), "old");
    std::string error;
    {
        const SizeLimit limit(1000);
        error = orchard::writeWholeFile(path("unit"), std::string(100000, 'x'));
    }
    EXPECT_THAT(error, testing::HasSubstr("File too large"));
    EXPECT_EQ(read(path("unit")), "old");
    EXPECT_EQ(filesInDirectory(), 1U) << "the draft has to go";
}

TEST_F(AtomicFile, KeepsThePermissionBits) {
    write(path("unit"), "old");
    ::chmod(path("unit").c_str(), 0640);
    EXPECT_EQ(orchard::writeWholeFile(path("unit"), "new"), "");
    struct stat state {};
    ::stat(path("unit").c_str(), &state);
    EXPECT_EQ(state.st_mode & 0777U, 0640U);
    EXPECT_EQ(read(path("unit")), "new");
}

TEST_F(AtomicFile, WritesToWhatALinkPointsAt) {
    write(path("real"), "old");
    std::filesystem::create_symlink(path("real"), path("link"));
    EXPECT_EQ(orchard::writeWholeFile(path("link"), "new"), "");
    EXPECT_TRUE(std::filesystem::is_symlink(path("link")));
    EXPECT_EQ(read(path("real")), "new");
}

TEST_F(AtomicFile, SaysWhyADirectoryCanNotTakeAFile) {
    EXPECT_THAT(orchard::writeWholeFile(path("none/unit"), "new"),
                testing::HasSubstr("No such file or directory"));
}

TEST_F(AtomicFile, ANewFileIsNeverWrittenOverAnother) {
    write(path("unit"), "old");
    EXPECT_THAT(orchard::writeNewFile(path("unit"), "new"), testing::HasSubstr("File exists"));
    EXPECT_EQ(read(path("unit")), "old");
}

} // namespace
